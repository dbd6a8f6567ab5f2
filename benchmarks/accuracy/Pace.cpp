#include "accuracy/Pace.h"

#include <algorithm>
#include <ctime>

namespace talmo::accuracy {

namespace {

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

Pace::Pace()
    : m_before(processorSeconds())
{
}

double Pace::sinceLastCall()
{
    const double now = processorSeconds();
    const double spent = now - m_before;
    m_before = now;
    m_transcript.processing += spent;
    return spent;
}

void Pace::tookSound(double seconds)
{
    m_transcript.length += seconds;
    m_done = std::max(m_done, m_transcript.length) + sinceLastCall();
}

PacedTranscript Pace::finished(const QString &text)
{
    m_transcript.text = text;
    m_done = std::max(m_done, m_transcript.length) + sinceLastCall();
    m_transcript.wait = m_done - m_transcript.length;
    return m_transcript;
}

} // namespace talmo::accuracy
