#include "App/DictationCancellation.h"

#include "Base/Log.h"

#include <QPointer>

#include <utility>

namespace talmo {

DictationCancellation::DictationCancellation(Parts parts, TalmoCoordinator &coordinator)
    : QObject(&coordinator),
      m_parts(std::move(parts)),
      m_coordinator(coordinator)
{
    // Queued: changes are announced before they are stored.
    connect(&coordinator, &Observable::objectWillChange, this, [this] { stateMayHaveChanged(); }, Qt::QueuedConnection);
}

DictationCancellation::~DictationCancellation()
{
    if (m_isRecording) {
        m_parts.key->release();
    }
}

void DictationCancellation::stateMayHaveChanged()
{
    const bool isRecording = m_coordinator.state().is(TalmoState::Case::Recording);
    if (std::exchange(m_isRecording, isRecording) == isRecording) {
        return;
    }
    if (!isRecording) {
        m_parts.key->release();
        m_parts.notice->setHint({}, {});
        return;
    }
    const bool isGrabbed = m_parts.key->grab([self = QPointer(this)] {
        if (self) {
            self->discard();
        }
    });
    showHint(isGrabbed);
}

void DictationCancellation::showHint(bool isGrabbed)
{
    const auto gesture = m_parts.gesture();
    if (gesture == ActiveMode::Toggle) {
        m_parts.notice->setHint(isGrabbed ? QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "%1: stop · Esc: discard"))
                                          : QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "%1: stop")),
                                m_parts.hotkeyName());
    } else if (!gesture && isGrabbed) {
        m_parts.notice->setHint(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Esc: discard")), {});
    }
}

void DictationCancellation::discard()
{
    if (!m_coordinator.state().is(TalmoState::Case::Recording)) {
        return;
    }
    generalLog().info("the recording was discarded");
    m_parts.endGesture();
    m_parts.notice->setFarewell(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Cancelled")));
    m_coordinator.cancelDictation();
}

} // namespace talmo
