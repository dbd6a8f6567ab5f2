#include "Platform/Linux/Evdev/EvdevEventMonitor.h"

#include <linux/input-event-codes.h>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

/// Of mice, tablets and game controllers: unlike a key, a click while a modifier is held does not mean that the
/// modifier is in use.
bool isButton(int code)
{
    return code >= BTN_MISC && code < KEY_OK;
}

} // namespace

EvdevEventMonitor::EvdevEventMonitor(std::unique_ptr<EvdevKeyboards> keyboards, const QList<quint32> &triggerKeys,
                                     Questions questions)
    : m_keyboards(std::move(keyboards)),
      m_questions(std::move(questions))
{
    setTriggerKeys(triggerKeys);
    m_withheld.setSingleShot(true);
    m_withheld.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_withheld, &QTimer::timeout, &m_withheld,
                     [this] { handleChange(m_filter.timePassed(std::chrono::steady_clock::now())); });
    m_keyboards->setOnKey([this](int code, bool isDown) { handleKey(code, isDown); });
}

std::shared_ptr<EventMonitorToken>
EvdevEventMonitor::addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler)
{
    return m_monitors.addGlobal(eventMask, std::move(handler));
}

std::shared_ptr<EventMonitorToken>
EvdevEventMonitor::addLocalMonitor(quint64 eventMask,
                                   std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    return m_monitors.addLocal(eventMask, std::move(handler));
}

void EvdevEventMonitor::setTriggerKeys(const QList<quint32> &triggerKeys)
{
    std::set<std::uint8_t> triggers;
    for (const auto symbol : triggerKeys) {
        for (const int code : m_layout.codesOf(symbol)) {
            triggers.insert(
                m_triggers.try_emplace(code, static_cast<std::uint8_t>(m_triggers.size() + 1)).first->second);
        }
    }
    m_filter.setKeyCodes(std::move(triggers));
}

std::uint8_t EvdevEventMonitor::triggerOf(int code) const
{
    const auto found = m_triggers.find(code);
    return found == m_triggers.end() ? 0 : found->second;
}

void EvdevEventMonitor::handleKey(int code, bool isDown)
{
    if (isButton(code) || (isDown && !m_questions.isSessionActive())) {
        return;
    }
    if (isDown && m_onCaptured) {
        std::exchange(m_onCaptured, {})(code);
        return;
    }
    const auto trigger = triggerOf(code);
    handleChange(isDown ? m_filter.keyDown(trigger, std::chrono::steady_clock::now()) : m_filter.keyUp(trigger));
}

void EvdevEventMonitor::handleChange(std::optional<bool> change)
{
    if (change) {
        m_monitors.report(*change, m_questions.isApplicationActive());
    }
    if (const auto due = m_filter.withheldUntil()) {
        m_withheld.start(std::chrono::ceil<std::chrono::milliseconds>(*due - std::chrono::steady_clock::now()));
    } else {
        m_withheld.stop();
    }
}

} // namespace talmo
