// Keys in any order and at any time, from the raw event to the start and the end of a recording.

#include "Fuzzing.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Keys/TriggerKeyFilter.h"
#include "Platform/Linux/X11/Keys/RepeatPairFilter.h"
#include "Support/FakeEventMonitor.h"
#include "Support/ManualClock.h"
#include "Support/TestLoop.h"

#include <QCoreApplication>

#include <array>
#include <chrono>
#include <memory>
#include <set>

using namespace talmo;
using namespace std::chrono_literals;
using fuzz::require;

namespace {

constexpr std::uint8_t firstTriggerKey = 105;
constexpr std::uint8_t secondTriggerKey = 108;
constexpr std::array<std::uint8_t, 4> keyCodes = {firstTriggerKey, secondTriggerKey, 38, 50};
constexpr std::uint16_t keyboard = 3;

/// The components between the X server and the coordinator, in virtual time.
class Keyboard {
public:
    Keyboard()
    {
        setLayout(3);
        m_manager.setOnHotkeyDown([this] {
            require(!m_isRecording);
            m_isRecording = true;
            ++m_starts;
        });
        m_manager.setOnHotkeyUp([this] {
            require(m_isRecording);
            m_isRecording = false;
        });
        m_manager.start();
    }

    /// One bit per key that is a trigger key from now on.
    void setLayout(int bits)
    {
        std::set<std::uint8_t> triggerKeys;
        if ((bits & 1) != 0) {
            triggerKeys.insert(firstTriggerKey);
        }
        if ((bits & 2) != 0) {
            triggerKeys.insert(secondTriggerKey);
        }
        m_triggerKeys.setKeyCodes(triggerKeys);
    }

    void key(std::uint8_t keyCode, bool isDown, std::uint16_t device)
    {
        if (isDown) {
            m_down.insert(keyCode);
        } else {
            m_down.erase(keyCode);
        }
        const auto serverTime = std::chrono::duration_cast<std::chrono::milliseconds>(m_now.time_since_epoch());
        m_raw.push({keyCode, device, isDown, static_cast<std::uint32_t>(serverTime.count())});
        handleRaw(false);
    }

    void pass(std::chrono::milliseconds time)
    {
        const Time end = m_now + time;
        while (m_now < end) {
            const Time next = std::min({end, m_deadline.value_or(end), m_triggerKeys.withheldUntil().value_or(end)});
            const auto step = std::max<Time::duration>(next - m_now, 0ms);
            m_now += step;
            m_clock->advance(step);
            if (m_deadline && m_now >= *m_deadline) {
                m_deadline.reset();
                handleRaw(true);
            }
            if (const auto due = m_triggerKeys.withheldUntil(); due && m_now >= *due) {
                report(m_triggerKeys.timePassed(m_now));
            }
            check();
        }
    }

    void releaseAll()
    {
        for (const auto keyCode : std::set(m_down)) {
            key(keyCode, false, keyboard);
        }
    }

    bool isRecording() const { return m_isRecording; }
    int starts() const { return m_starts; }

    /// Holds whenever nothing is pending.
    void checkAtRest() const
    {
        require(!m_raw.isHoldingBack());
        const bool isDown = m_down.contains(firstTriggerKey) || m_down.contains(secondTriggerKey);
        require(isDown || !m_isReportedDown);
        require(isDown || !m_isRecording || m_manager.recognizer().activeMode() == ActiveMode::Toggle);
    }

private:
    void handleRaw(bool hasTimedOut)
    {
        while (const auto next = m_raw.take(hasTimedOut)) {
            if (next->isDown) {
                m_real.insert(next->keyCode);
                report(m_triggerKeys.keyDown(next->keyCode, m_now));
            } else {
                m_real.erase(next->keyCode);
                const auto change = m_triggerKeys.keyUp(next->keyCode);
                // All keys that were trigger keys when they were pressed count as one key.
                const auto &held = m_triggerKeys.held();
                const bool isHeld = std::any_of(m_real.begin(), m_real.end(),
                                                [&held](std::uint8_t keyCode) { return held.contains(keyCode); });
                require(change != false || !isHeld);
                report(change);
            }
            check();
        }
        if (m_raw.isHoldingBack() && !m_deadline) {
            m_deadline = m_now + 5ms;
        }
    }

    void report(std::optional<bool> change)
    {
        if (!change) {
            return;
        }
        require(*change != m_isReportedDown); // Presses and releases alternate.
        m_isReportedDown = *change;
        m_monitor->send(*change ? GlobalHotkeyManager::functionFlag : 0);
        test::settle();
    }

    void check() const
    {
        const auto mode = m_manager.recognizer().activeMode();
        require(m_isRecording == mode.has_value());
        require(mode != ActiveMode::Hold || m_isReportedDown);
        require(m_triggerKeys.isReportedDown() == m_isReportedDown);
    }

    using Time = TriggerKeyFilter::Time;

    Time m_now{std::chrono::hours(1)};
    std::set<std::uint8_t> m_down;
    /// Without the repeats.
    std::set<std::uint8_t> m_real;
    TriggerKeyFilter m_triggerKeys;
    RepeatPairFilter m_raw{[this](std::uint8_t keyCode) { return m_triggerKeys.isWatched(keyCode); }};
    std::optional<Time> m_deadline;
    bool m_isReportedDown = false;
    bool m_isRecording = false;
    int m_starts = 0;
    std::shared_ptr<test::ManualClock> m_clock = std::make_shared<test::ManualClock>();
    std::shared_ptr<test::FakeEventMonitor> m_monitor = std::make_shared<test::FakeEventMonitor>();
    GlobalHotkeyManager m_manager{m_monitor, std::make_shared<test::FakeInputTrust>(), m_clock,
                                  SerialExecutor::onCurrentThread()};
};

/// Longer than every timer.
constexpr auto rest = 700ms;

/// Whatever happened before, the next dictation works.
void checkNextDictation(Keyboard &keys)
{
    keys.releaseAll();
    keys.pass(rest);
    keys.checkAtRest();
    keys.setLayout(3);
    if (keys.isRecording()) {
        keys.key(firstTriggerKey, true, keyboard);
        require(!keys.isRecording());
        keys.key(firstTriggerKey, false, keyboard);
        keys.pass(rest);
    }
    require(!keys.isRecording());
    const int before = keys.starts();
    keys.key(firstTriggerKey, true, keyboard);
    keys.pass(FnGestureRecognizer::holdThreshold / 1ms * 1ms);
    require(keys.isRecording() && keys.starts() == before + 1);
    keys.key(firstTriggerKey, false, keyboard);
    keys.pass(10ms); // On a device that has repeated keys, releases are held back.
    require(!keys.isRecording());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    fuzz::SilentLog::install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::size_t longest = 200;
    FuzzedDataProvider data(bytes, std::min(size, longest));
    Keyboard keys;
    while (data.remaining_bytes() > 0) {
        // The low bits choose the key, the direction, the keyboard and a rest afterwards; the top three choose the time
        // that passes before it.
        const auto step = data.ConsumeIntegral<std::uint8_t>();
        constexpr std::array<int, 8> times = {0, 0, 1, 4, 60, 149, 150, 300};
        keys.pass(std::chrono::milliseconds(times[step >> 5]));
        constexpr int layoutChange = 0x18; // In place of a rest after a release on the second keyboard.
        if ((step & 0x1C) == layoutChange) {
            keys.setLayout(step & 3);
            continue;
        }
        const std::uint16_t device = (step & 8) == 0 ? keyboard : keyboard + 1;
        const auto keyCode = keyCodes[step & 3];
        keys.key(keyCode, (step & 4) != 0, device);
        if ((step & 16) != 0) {
            keys.pass(rest);
            keys.checkAtRest();
        }
    }
    checkNextDictation(keys);
    return 0;
}
