#include "Platform/Linux/Wayland/Portal/PortalKeysStatus.h"

#include "Base/Log.h"
#include "Platform/Linux/Session/DesktopNotice.h"
#include "UI/Style/Wording.h"

#include <utility>

namespace talmo {

namespace {

using State = PortalKeys::State;

const char *const refusal =
    QT_TRANSLATE_NOOP("Talmo", "The desktop did not give Talmo a dictation key. Ask again in the settings, under "
                               "Privacy, or bind a key to “talmoctl toggle” in the desktop's keyboard settings.");

} // namespace

PortalKeysStatus::PortalKeysStatus(std::shared_ptr<PortalKeys> keys)
    : m_keys(std::move(keys))
{
    m_keys->setOnStateChanged([this] { follow(); });
}

PortalKeysStatus::~PortalKeysStatus()
{
    m_keys->setOnStateChanged({});
}

DesktopExtension::Status PortalKeysStatus::status() const
{
    const QString askAgain = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Ask for the key again"));
    switch (m_keys->state()) {
    case State::Asking:
        return {Wording::text(QT_TRANSLATE_NOOP("Talmo", "The desktop asks which key starts dictation.")), false, false,
                askAgain};
    case State::Bound:
        return {m_keys->trigger().isEmpty()
                    ? QString()
                    : Wording::text(QT_TRANSLATE_NOOP("Talmo", "The desktop's key for dictation: %1"))
                          .arg(m_keys->trigger()),
                false, false, askAgain};
    case State::Refused:
        return {Wording::text(refusal), true, true, askAgain};
    case State::Waiting:
        break;
    }
    return {};
}

void PortalKeysStatus::enable()
{
    m_keys->askAgain();
}

void PortalKeysStatus::follow()
{
    if (m_keys->state() == State::Refused) {
        generalLog().info("the desktop portal refused the dictation key");
        showDesktopNotice(Wording::text(refusal));
    } else if (m_keys->state() == State::Bound) {
        generalLog().info("the desktop portal reports the dictation key: %s", {m_keys->trigger()});
    }
    Q_EMIT objectWillChange();
}

} // namespace talmo
