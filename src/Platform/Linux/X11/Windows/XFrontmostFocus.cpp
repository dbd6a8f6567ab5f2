#include "Platform/Linux/X11/Windows/XFrontmostFocus.h"

#include "Base/Completion.h"
#include "Base/Error.h"
#include "Base/Task.h"
#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XProperty.h"

#include <utility>

namespace talmo {

namespace {

constexpr Duration pause = std::chrono::milliseconds(10);
constexpr Duration longestWait = std::chrono::milliseconds(500);

/// The window with the keyboard focus. When the reply arrives, the server has carried out all earlier requests.
quint32 focusedWindow()
{
    auto *connection = applicationConnection();
    const XcbPtr<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

QCoro::Task<void> waitForFocus(std::shared_ptr<Clock> clock, quint32 window, std::shared_ptr<Completion<void>> done)
{
    const Instant deadline = clock->now() + longestWait;
    try {
        while (focusedWindow() != window && clock->now() < deadline) {
            co_await clock->sleep(pause);
        }
    } catch (const Cancelled &) { // NOLINT(bugprone-empty-catch): a wait cut short counts as waited.
    }
    done->finish();
}

} // namespace

XFrontmostFocus::XFrontmostFocus(std::shared_ptr<Clock> clock)
    : m_clock(std::move(clock))
{
}

void XFrontmostFocus::remember()
{
    m_window = focusedWindow();
}

QFuture<void> XFrontmostFocus::returned()
{
    auto done = Completion<void>::make();
    auto future = done->future();
    logEscapes(waitForFocus(m_clock, m_window, done));
    return future;
}

} // namespace talmo
