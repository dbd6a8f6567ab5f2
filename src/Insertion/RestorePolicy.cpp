#include "Insertion/RestorePolicy.h"

#include <algorithm>

namespace talmo {

using namespace std::chrono_literals;

void RestorePolicy::begin()
{
    *this = RestorePolicy();
}

void RestorePolicy::post(Time now, std::optional<quint32> reader)
{
    m_posted = now;
    m_reader = reader;
}

void RestorePolicy::postToImporter(Time now)
{
    m_posted = now;
    m_isImporter = true;
    m_isRead = m_wasReadBefore;
    m_lastRequest = now;
}

void RestorePolicy::noteRequest(Time now, quint32 reader, bool isData)
{
    m_wasReadBefore = m_wasReadBefore || isData;
    if (!m_posted || (m_reader && reader != *m_reader)) {
        return;
    }
    m_lastRequest = now;
    m_isRead = m_isRead || isData;
}

RestorePolicy::Verdict RestorePolicy::verdict(Time now, bool isSending) const
{
    if (!m_posted) {
        return Verdict::Wait;
    }
    const auto deadline = *m_posted + readTime;
    if (m_isRead) {
        const auto earliest = m_isImporter ? deadline : m_lastRequest + quietTime;
        return now >= earliest && !isSending ? Verdict::Restore : Verdict::Wait;
    }
    return now >= deadline ? Verdict::GiveUp : Verdict::Wait;
}

RestorePolicy::Time RestorePolicy::nextLook(Time now) const
{
    if (!m_posted) {
        return now + readTime;
    }
    const auto deadline = *m_posted + readTime;
    const auto wanted = m_isRead && !m_isImporter ? m_lastRequest + quietTime : deadline;
    return std::max(wanted, now + 10ms); // A transfer in progress is checked again soon.
}

} // namespace talmo
