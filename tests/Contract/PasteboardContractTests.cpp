#include "Contract/PasteboardContract.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Support/FakePasteboard.h"
#include "VirtualDesktop.h"
#include "WaylandDesktop.h"

namespace talmo::test {

namespace {

struct FakeSubject {
    FakePasteboard pasteboard;
};

struct XcbSubject {
    testbed::VirtualDesktop desktop;
    XcbPasteboard pasteboard{XSession::open()};
};

struct WaylandSubject {
    static bool isPossible() { return testbed::WaylandDesktop::isInstalled(); }

    testbed::WaylandDesktop desktop;
    WaylandPasteboard pasteboard{WaylandSession::open()};
};

using Subjects = testing::Types<FakeSubject, XcbSubject, WaylandSubject>;
INSTANTIATE_TYPED_TEST_SUITE_P(Desktops, PasteboardContract, Subjects);

} // namespace

} // namespace talmo::test
