// Started by tests/Gnome/run.

#include "Contract/PasteboardContract.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"

namespace talmo::test {

namespace {

/// The clipboard of X, which the shell bridges.
struct GnomeSubject {
    GnomeSubject() { pasteboard.clearContents(); } // All tests share the session.
    static bool isPossible() { return qEnvironmentVariableIsSet("TALMO_GNOME_SESSION"); }

    XcbPasteboard pasteboard{XSession::open(true)};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Gnome, PasteboardContract, GnomeSubject);

} // namespace

} // namespace talmo::test
