#include "Contract/EventMonitorContract.h"
#include "Platform/Linux/Evdev/EvdevEventMonitor.h"
#include "Platform/Linux/Evdev/MockKeyboards.h"
#include "Platform/Linux/Keys/TriggerKeys.h"

namespace talmo::test {

namespace {

struct EvdevSubject {
    EvdevSubject()
        : monitor(opened(keyboards), triggerKeySymbols({}),
                  EvdevEventMonitor::Questions{[this] { return isActive; }, [] { return true; }})
    {
    }
    static std::unique_ptr<EvdevKeyboards> opened(MockKeyboards &keyboards)
    {
        keyboards.plugIn(0);
        return EvdevKeyboards::open();
    }
    void press() { keyboards.press(0, KEY_RIGHTCTRL); }
    void release() { keyboards.release(0, KEY_RIGHTCTRL); }
    void setActive(bool active) { isActive = active; }

    MockKeyboards keyboards;
    bool isActive = false;
    EvdevEventMonitor monitor;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Evdev, EventMonitorContract, EvdevSubject);

} // namespace

} // namespace talmo::test
