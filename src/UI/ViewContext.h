#pragma once

#include "App/DictationRecovery.h"
#include "App/TalmoCoordinator.h"
#include "Input/Permissions/PermissionsManager.h"
#include "Settings/PasswordFieldSettings.h"
#include "Settings/RecogniserSettings.h"
#include "Settings/TalmoSettings.h"
#include "UI/EditingServer.h"

#include <QFuture>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// What the views look at and act upon. They observe the coordinator alone, which announces every change of the
/// settings and of the permissions as its own. It outlives the views.
struct ViewContext {
    TalmoCoordinator *coordinator = nullptr;
    std::shared_ptr<TalmoSettings> settings;
    std::shared_ptr<PermissionsManager> permissions;
    /// Why the language model cannot be used, as a sentence; none when it can. Never waits.
    std::function<std::optional<QString>()> unavailabilityMessage;
    /// Has that looked up anew; finishes when it has been. Never fails.
    std::function<QFuture<void>()> refreshAvailability;
    /// Who gets the text. Never waits. Empty on a system that has no servers for that.
    std::function<EditingServer()> editingServer;
    /// Null on a system that has one recogniser and nothing to choose.
    std::shared_ptr<RecogniserSettings> recogniser;
    /// Null on a system that cannot tell password fields from others.
    std::shared_ptr<PasswordFieldSettings> passwordFields;
    /// Null where nothing can be got back.
    std::shared_ptr<DictationRecovery> recovery;
};

} // namespace talmo
