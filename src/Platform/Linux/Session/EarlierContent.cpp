#include "Platform/Linux/Session/EarlierContent.h"

#include "Insertion/RestorePolicy.h"

#include <utility>

namespace talmo {

EarlierContent::EarlierContent(std::function<void()> onTextRead, Moment moment)
    : m_onTextRead(std::move(onTextRead)),
      m_moment(moment)
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        if (std::exchange(m_wasTextRead, false)) {
            m_onTextRead();
        }
    });
}

void EarlierContent::keep(std::optional<Content> content)
{
    m_content = std::move(content);
    m_isHeld = m_content.has_value();
}

void EarlierContent::noteRequest(bool wasRead)
{
    m_wasTextRead = m_wasTextRead || wasRead;
    if (m_moment == Moment::AfterLastRequest || !m_timer.isActive()) {
        m_timer.start(RestorePolicy::quietTime);
    }
}

void EarlierContent::forgetRequests()
{
    m_wasTextRead = false;
    m_timer.stop();
}

} // namespace talmo
