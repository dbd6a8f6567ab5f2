#include "Platform/Linux/Gnome/GnomeExtensionStatus.h"

#include "Base/Task.h"
#include "UI/Style/Wording.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

namespace {

using State = GnomeExtension::State;

const char *sentenceFor(State state)
{
    switch (state) {
    case State::Disabled:
        return QT_TRANSLATE_NOOP("Talmo", "GNOME lets Talmo hear its key and paste only with the help of an extension, "
                                          "which comes with Talmo and does nothing else.");
    case State::NeedsLogin:
        return QT_TRANSLATE_NOOP("Talmo", "Talmo's GNOME extension is enabled. Log out and in once to start it.");
    case State::Enabled:
        return QT_TRANSLATE_NOOP("Talmo", "Talmo's GNOME extension is enabled.");
    case State::AllDisabled:
        return QT_TRANSLATE_NOOP("Talmo", "GNOME's extensions are switched off. Switch them on in the Extensions "
                                          "application, then enable Talmo's here.");
    case State::NotInstalled:
        return QT_TRANSLATE_NOOP("Talmo",
                                 "Talmo's GNOME extension is missing, so the key works in only a few programs. "
                                 "Reinstall the Talmo package.");
    case State::Failed:
        return QT_TRANSLATE_NOOP("Talmo", "GNOME could not start Talmo's extension. Update Talmo, then log out and in "
                                          "once.");
    case State::NoShell:
        break;
    }
    return nullptr;
}

} // namespace

GnomeExtensionStatus::GnomeExtensionStatus(QDBusConnection bus)
    : m_extension(std::move(bus))
{
}

DesktopExtension::Status GnomeExtensionStatus::statusFor(GnomeExtension::State state)
{
    const char *sentence = sentenceFor(state);
    return {sentence != nullptr ? Wording::text(sentence) : QString(),
            state != State::Enabled && state != State::NoShell, state == State::Disabled};
}

DesktopExtension::Status GnomeExtensionStatus::status() const
{
    Status status = m_state ? statusFor(*m_state) : Status();
    status.canBeEnabled = status.canBeEnabled && !m_isEnabling;
    return status;
}

void GnomeExtensionStatus::refresh()
{
    if (!m_isEnabling) {
        logEscapes(takeState(this, m_extension.state()));
    }
}

void GnomeExtensionStatus::enable()
{
    publish(m_isEnabling, true);
    logEscapes(takeEnabled(this, m_extension.enable()));
}

/// What was found before the user enabled it must not offer that again.
QCoro::Task<void> GnomeExtensionStatus::takeState(QPointer<GnomeExtensionStatus> self,
                                                  QFuture<GnomeExtension::State> state)
{
    const State found = co_await state;
    if (self && !self->m_isEnabling) {
        self->publish(self->m_state, found);
    }
}

QCoro::Task<void> GnomeExtensionStatus::takeEnabled(QPointer<GnomeExtensionStatus> self,
                                                    QFuture<GnomeExtension::State> state)
{
    const State found = co_await state;
    if (self) {
        self->m_isEnabling = false;
        self->publish(self->m_state, found);
    }
}

} // namespace talmo
