#include "Platform/Linux/X11/XSession.h"

#include "Base/Log.h"

#include <poll.h>

#include <utility>

namespace talmo {

std::shared_ptr<XSession> XSession::open(bool isNested)
{
    std::shared_ptr<XSession> session(new XSession(isNested));
    session->m_executor->call([raw = session.get()] { raw->openOnThread(); }).waitForFinished();
    return session;
}

XSession::XSession(bool isNested)
    : m_isNested(isNested),
      m_connection(std::make_unique<XConnection>()),
      m_executor(SerialExecutor::onNewThread(QStringLiteral("talmo-x11")))
{
}

XSession::~XSession()
{
    m_executor
        ->call([this] {
            m_notifier.reset();
            m_handlers.clear();
        })
        .waitForFinished();
}

void XSession::openOnThread()
{
    auto *connection = m_connection->get();
    m_window = xcb_generate_id(connection);
    constexpr quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_connection->root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    m_notifier = std::make_unique<QSocketNotifier>(m_connection->fileDescriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { flush(); });
    flush();
}

void XSession::flush()
{
    m_connection->flush();
    while (true) {
        XcbPtr<xcb_generic_event_t> event;
        if (!m_deferredEvents.empty()) {
            event = std::move(m_deferredEvents.front());
            m_deferredEvents.erase(m_deferredEvents.begin());
        } else {
            event.reset(xcb_poll_for_event(m_connection->get()));
        }
        if (!event) {
            break;
        }
        dispatch(std::move(event));
    }
    m_connection->flush();
    if (m_connection->isBroken() && m_notifier && m_notifier->isEnabled()) {
        m_notifier->setEnabled(false); // The end of file would wake the thread endlessly.
        generalLog().error("the connection to the X server was lost");
        if (m_onConnectionLost) {
            m_onConnectionLost();
        }
    }
}

void XSession::dispatch(XcbPtr<xcb_generic_event_t> event)
{
    for (const auto &handler : m_handlers) {
        handler(*event);
    }
}

void XSession::synchronise()
{
    // Any reply will do: it comes after all events that were under way.
    const XcbPtr<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_connection->get(), xcb_get_input_focus(m_connection->get()), nullptr));
    flush();
}

xcb_window_t XSession::selectionOwner(xcb_atom_t selection)
{
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection->get(), xcb_get_selection_owner(m_connection->get(), selection), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
}

xcb_timestamp_t XSession::serverTime()
{
    auto *connection = m_connection->get();
    const auto property = m_connection->atom("TALMO_TIME");
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, m_window, property, XCB_ATOM_INTEGER, 32, 0, nullptr);
    m_connection->flush();
    while (!m_connection->isBroken()) {
        XcbPtr<xcb_generic_event_t> event(xcb_poll_for_event(connection));
        if (!event) {
            pollfd descriptor{m_connection->fileDescriptor(), POLLIN, 0};
            constexpr int timeout = 1000; // Milliseconds. The server itself responds, unless it is gone.
            if (poll(&descriptor, 1, timeout) <= 0) {
                break;
            }
            continue;
        }
        const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event.get()); // NOLINT
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && change->window == m_window &&
            change->atom == property) {
            return change->time;
        }
        m_deferredEvents.push_back(std::move(event));
    }
    return XCB_CURRENT_TIME;
}

} // namespace talmo
