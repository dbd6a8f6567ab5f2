#pragma once

#include "Base/SerialExecutor.h"
#include "Platform/Linux/Session/XdgAutostart.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Settings/TalmoSettings.h"

#include <QCoreApplication>

#include <memory>

namespace talmo::ctl {

/// The user's settings, as the running program reads them.
struct UserSettings {
    std::shared_ptr<JsonUserDefaults> defaults = JsonUserDefaults::ofThisUser(SerialExecutor::onCurrentThread());
    std::shared_ptr<TalmoSettings> values = std::make_shared<TalmoSettings>(
        defaults,
        std::make_shared<XdgAutostart>(XdgAutostart::forThisSession(QCoreApplication::applicationFilePath())));
};

} // namespace talmo::ctl
