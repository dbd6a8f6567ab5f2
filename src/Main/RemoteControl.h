#pragma once

#include "Control/ControlServer.h"
#include "Main/RecogniserSettingsModel.h"
#include "Main/Services.h"
#include "Platform/Linux/Session/ControlBus.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "UI/UserInterface.h"

#include <QObject>

#include <memory>

namespace talmo {

/// Lets the user's other programs control Talmo, over the control socket and the session bus. Main thread.
class RemoteControl final : public QObject {
public:
    struct Parts {
        std::shared_ptr<Services> services;
        std::shared_ptr<RecogniserSettingsModel> recogniser;
        std::shared_ptr<JsonUserDefaults> defaults;
        std::shared_ptr<Clock> clock;
    };

    /// Listens at once. The interface and the coordinator outlive it.
    RemoteControl(const Parts &parts, UserInterface &interface, TalmoCoordinator &coordinator);

private:
    ControlBus m_bus;
    ControlServer m_server;
};

} // namespace talmo
