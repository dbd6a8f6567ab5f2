#include "Platform/Linux/Session/SecretLifetime.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <utility>

namespace talmo {

SecretLifetime::SecretLifetime(std::function<void()> onEnd, std::chrono::milliseconds time)
    : m_onEnd(std::move(onEnd))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(time);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { end(); });
}

void SecretLifetime::noteContent(const QList<PasteboardRepresentation> &content)
{
    forget();
    m_isSecret = talmo::isSecret(content);
}

void SecretLifetime::forget()
{
    m_timer.stop();
    m_isSecret = false;
    m_isOver = false;
}

void SecretLifetime::putBack()
{
    if (!m_timer.isActive()) {
        m_timer.start();
    }
}

void SecretLifetime::end()
{
    if (m_isSecret) {
        m_timer.stop();
        m_isOver = true;
        m_onEnd();
    }
}

} // namespace talmo
