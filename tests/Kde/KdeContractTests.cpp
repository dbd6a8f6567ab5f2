#include "Contract/PasteboardContract.h"
#include "KdeDesktop.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"

namespace talmo::test {

namespace {

struct KdeSubject {
    KdeSubject()
        : desktop(QStringList()),
          pasteboard(session(desktop))
    {
    }
    static std::shared_ptr<WaylandSession> session(const testbed::KdeDesktop &desktop)
    {
        for (const auto *name : {"WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
            qputenv(name, desktop.environment().value(QString::fromLatin1(name)).toUtf8());
        }
        return WaylandSession::open();
    }

    testbed::KdeDesktop desktop;
    WaylandPasteboard pasteboard;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Kde, PasteboardContract, KdeSubject);

} // namespace

} // namespace talmo::test
