#include "Main/RemoteControl.h"

#include "App/DictationCancellation.h"
#include "Control/ControlSocket.h"
#include "Recognition/RecogniserChoice.h"

#include <utility>

namespace talmo {

namespace {

/// The recogniser changes even if the choice cannot be saved; then the caller gets the error.
QCoro::Task<void> chooseRecogniser(std::shared_ptr<RecogniserSettingsModel> recogniser,
                                   std::shared_ptr<JsonUserDefaults> defaults, QString stored)
{
    recogniser->choose(RecogniserChoice::of(stored));
    const auto saving = defaults->saved();
    co_await saving;
}

void moveKey(const Services &services, ControlSocket::KeyCommand command)
{
    switch (command) {
    case ControlSocket::KeyCommand::Press:
        services.commandedKeys->press();
        break;
    case ControlSocket::KeyCommand::Release:
        services.commandedKeys->release();
        break;
    case ControlSocket::KeyCommand::Toggle:
        services.commandedKeys->toggle([&services] { return services.keys->recognizer().activeMode().has_value(); });
        break;
    case ControlSocket::KeyCommand::Cancel:
        services.cancellation->discard();
        break;
    }
}

ControlActions actionsOf(const RemoteControl::Parts &parts, UserInterface &interface, TalmoCoordinator &coordinator)
{
    const auto services = parts.services;
    const auto recovery = services->recovery;
    ControlActions actions;
    actions.insert = [insertion = services->insertion](const QString &text) { return insertion->insertExactly(text); };
    actions.openSettings = [&interface] { interface.openSettings(); };
    actions.toggleMenu = [&interface] { interface.toggleMenu(); };
    actions.chooseRecogniser = [recogniser = parts.recogniser, defaults = parts.defaults](const QString &stored) {
        return chooseRecogniser(recogniser, defaults, stored);
    };
    actions.lastDictation = [recovery](bool isRaw) { return isRaw ? recovery->lastRawText() : recovery->lastText(); };
    actions.putEarlierClipboardBack = [recovery] { return recovery->putEarlierClipboardBack(); };
    actions.setPaused = [pause = services->pause](bool isPaused) { pause->setPaused(isPaused); };
    actions.moveKey = [services](ControlSocket::KeyCommand command) { moveKey(*services, command); };
    actions.lastTrace = [trace = services->trace] { return trace->table(); };
    actions.status = [&coordinator] {
        const auto &state = coordinator.state();
        return ControlSocket::Status{name(state), state.message()};
    };
    return actions;
}

} // namespace

RemoteControl::RemoteControl(const Parts &parts, UserInterface &interface, TalmoCoordinator &coordinator)
    : m_bus(QDBusConnection::sessionBus(), actionsOf(parts, interface, coordinator)),
      m_server(actionsOf(parts, interface, coordinator), parts.clock)
{
    m_bus.open();
    connect(&coordinator, &Observable::objectWillChange, &m_bus, [this] { m_bus.tellState(); }, Qt::QueuedConnection);
    m_server.listen(ControlSocket::path());
}

} // namespace talmo
