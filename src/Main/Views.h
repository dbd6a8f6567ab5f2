#pragma once

#include "Main/Services.h"
#include "Main/SettingsModels.h"
#include "Platform/Desktop.h"
#include "Settings/DictationOptions.h"
#include "Settings/PasswordFieldSettings.h"
#include "UI/UserInterface.h"

#include <memory>

namespace talmo {

/// What the views show, and the desktop that they are shown on.
struct ViewParts {
    std::shared_ptr<Services> services;
    std::shared_ptr<LoopbackLanguageModel> languageModel;
    std::shared_ptr<PasswordFieldSettings> passwordFields;
    std::shared_ptr<DictationOptions> options;
    std::shared_ptr<const Desktop> desktop;
};

/// Connects the views to what they show. The coordinator outlives them.
std::unique_ptr<UserInterface> makeViews(const ViewParts &parts, const SettingsModels &models,
                                         TalmoCoordinator &coordinator);

} // namespace talmo
