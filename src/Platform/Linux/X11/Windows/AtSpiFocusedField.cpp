#include "Platform/Linux/X11/Windows/AtSpiFocusedField.h"

#include "Base/Completion.h"
#include "Platform/Linux/Session/PasswordFieldSearch.h"
#include "Platform/Linux/X11/Windows/FrontWindow.h"
#include "Platform/Linux/X11/XProperty.h"

#include <utility>

namespace talmo {

namespace {

/// The process of the window with the keyboard focus; 0 if there is none or it is not declared. Some toolkits give the
/// focus to a child of the window that declares it.
qint64 focusedProcess(XSession &session)
{
    constexpr int deepest = 8;
    auto &connection = session.connection();
    auto window = frontWindow(session).window;
    for (int depth = 0; window != XCB_NONE && window != connection.root() && depth < deepest; ++depth) {
        const auto numbers = xNumbers(xProperty(connection.get(), window, connection.atom("_NET_WM_PID")));
        if (!numbers.isEmpty()) {
            return numbers.first();
        }
        const XcbPtr<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
        window = tree ? tree->parent : XCB_NONE;
    }
    return 0;
}

bool ask(qint64 processId, QDeadlineTimer deadline)
{
    // The call may have been queued behind a program that hangs.
    if (deadline.hasExpired()) {
        return false;
    }
    const auto bus = AccessibilityBus::connect(deadline);
    return bus && isInPasswordField(*bus, processId);
}

} // namespace

AtSpiFocusedField::AtSpiFocusedField(std::shared_ptr<XSession> session)
    : m_session(std::move(session)),
      m_executor(SerialExecutor::onNewThread(QStringLiteral("talmo-focus")))
{
}

QFuture<bool> AtSpiFocusedField::isPassword(Duration limit)
{
    const auto answer = Completion<bool>::make();
    const QDeadlineTimer deadline(limit);
    m_session->executor().post([session = m_session.get(), executor = m_executor, answer, deadline] {
        const auto processId = focusedProcess(*session);
        session->flush();
        if (processId == 0) {
            answer->finish(false);
            return;
        }
        executor->post([answer, processId, deadline] { answer->finish(ask(processId, deadline)); });
    });
    return answer->future();
}

} // namespace talmo
