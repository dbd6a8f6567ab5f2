#include "App/Trace/DictationTrace.h"

#include <chrono>
#include <utility>

namespace talmo {

namespace {

constexpr std::array stageNames = {
    "key pressed",     "recording",         "key released",          "last audio",
    "text recognised", "text cleaned up",   "text on the clipboard", "paste shortcut posted",
    "text read",       "clipboard restored"};

constexpr std::size_t indexOf(DictationTrace::Stage stage)
{
    return static_cast<std::size_t>(stage);
}

double milliseconds(Duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

} // namespace

DictationTrace::DictationTrace(std::shared_ptr<Clock> clock)
    : m_clock(std::move(clock))
{
}

void DictationTrace::note(Stage stage)
{
    const Instant now = m_clock->now();
    const std::lock_guard lock(m_mutex);
    if (stage == Stage::Pressed) {
        m_pressed = now;
        return;
    }
    if (stage == Stage::Recording) {
        m_times = {};
        m_times[indexOf(Stage::Pressed)] = std::exchange(m_pressed, std::nullopt);
    } else if (indexOf(stage) != m_next) {
        return;
    }
    m_times[indexOf(stage)] = now;
    m_next = indexOf(stage) + 1;
}

std::optional<QString> DictationTrace::table() const
{
    const std::lock_guard lock(m_mutex);
    const auto &recording = m_times[indexOf(Stage::Recording)];
    if (!recording) {
        return std::nullopt;
    }
    const Instant begin = m_times[indexOf(Stage::Pressed)].value_or(*recording);
    static_assert(stageNames.size() == stageCount);
    QStringList lines{QString::asprintf("%-22s %9s %9s", "", "ms", "+ ms")};
    Instant last = begin;
    for (std::size_t index = 0; index < m_times.size(); ++index) {
        if (const auto &time = m_times[index]) {
            lines += QString::asprintf("%-22s %9.1f %9.1f", stageNames[index], milliseconds(*time - begin),
                                       milliseconds(*time - last));
            last = *time;
        }
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace talmo
