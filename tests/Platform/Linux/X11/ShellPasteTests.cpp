// Pastes into windows of Wayland, with a client of the server that stands in for the compositor.

#include "Platform/Linux/X11/PasteFixture.h"

#include <atomic>
#include <string_view>
#include <xcb/xcb.h>

namespace talmo::test {

namespace {

/// Names itself as the window manager, and asks for selections as a compositor does before it offers them.
class Compositor {
public:
    explicit Compositor(const QString &display)
        : m_connection(xcb_connect(display.toLatin1().constData(), nullptr)),
          m_window(xcb_generate_id(m_connection))
    {
        constexpr quint32 isUnmanaged = 1;
        const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
        xcb_map_window(m_connection, m_window);
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, screen->root, atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, &m_window);
        // Where the focus is while a window of Wayland has it.
        xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_NONE, m_window, XCB_CURRENT_TIME);
        synchronise();
    }
    ~Compositor() { xcb_disconnect(m_connection); }
    Compositor(const Compositor &) = delete;
    Compositor &operator=(const Compositor &) = delete;

    void askForTypes()
    {
        xcb_convert_selection(m_connection, m_window, atom("CLIPBOARD"), atom("TARGETS"), atom("TALMO_TEST"),
                              XCB_CURRENT_TIME);
        synchronise();
    }

private:
    xcb_atom_t atom(std::string_view name)
    {
        const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<quint16>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(m_connection, cookie, nullptr), &std::free);
        return reply->atom;
    }
    /// The server has carried out everything up to here.
    void synchronise() { atom("TALMO_TEST"); }

    xcb_connection_t *m_connection;
    xcb_window_t m_window;
};

class Shell final : public ShellPaster {
public:
    bool isAvailable() const override { return true; }
    QFuture<Front> front() override { return QtFuture::makeReadyFuture(Front{7, PasteStyle::ControlV, false}); }
    QFuture<PasteReceipt::Outcome> press(quint64 /*window*/, PasteStyle /*style*/) override
    {
        isPressed = true;
        return QtFuture::makeReadyFuture(PasteReceipt::Outcome::Taken);
    }

    std::atomic<bool> isPressed = false;
};

} // namespace

TEST_F(XcbPasteTest, shortcutWaitsUntilCompositorKnowsText)
{
    Compositor compositor(desktop.environment().value(u"DISPLAY"_s));
    const auto shell = std::make_shared<Shell>();
    XTestKeyEventPoster byShell(session, pasteboard->transaction(), shell);
    paste(u"new"_s, byShell);
    EXPECT_FALSE(shell->isPressed) << "the window would paste what was on the clipboard before";
    compositor.askForTypes();
    EXPECT_TRUE(waitFor([&] { return shell->isPressed.load(); }));
}

} // namespace talmo::test
