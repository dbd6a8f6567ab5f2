#include "Support/RawSelectionOwner.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace talmo::test {

RawSelectionOwner::RawSelectionOwner(const QByteArray &selection, std::vector<std::pair<QByteArray, Value>> values,
                                     std::uint32_t unknownTargets)
    : m_window(xcb_generate_id(m_connection.get())),
      m_selection(m_connection.atom(selection)),
      m_values(std::move(values)),
      m_unknownTargets(unknownTargets)
{
    auto *connection = m_connection.get();
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection, m_window, m_selection, XCB_CURRENT_TIME);
    m_connection.atom("TARGETS");
    m_thread = std::thread([this] { serve(); });
}

RawSelectionOwner::~RawSelectionOwner()
{
    m_isEnding = true;
    // Wakes the thread with an event sent over a separate connection.
    XConnection waker;
    std::array<char, 32> event{};
    event[0] = static_cast<char>(XCB_CLIENT_MESSAGE);
    event[1] = 32;
    std::memcpy(event.data() + 4, &m_window, sizeof(m_window));
    xcb_send_event(waker.get(), 0, m_window, XCB_EVENT_MASK_NO_EVENT, event.data());
    waker.flush();
    m_thread.join();
}

std::vector<QByteArray> RawSelectionOwner::requestedTargets() const
{
    const std::lock_guard lock(m_mutex);
    return m_requested;
}

void RawSelectionOwner::serve()
{
    while (!m_isEnding) {
        const XcbPtr<xcb_generic_event_t> event(xcb_wait_for_event(m_connection.get()));
        if (!event) {
            return;
        }
        if ((event->response_type & 0x7f) == XCB_SELECTION_REQUEST) {
            answer(reinterpret_cast<const xcb_selection_request_event_t &>(*event));
        } else if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
            sendPiece(reinterpret_cast<const xcb_property_notify_event_t &>(*event));
        }
    }
}

void RawSelectionOwner::sendPiece(const xcb_property_notify_event_t &event)
{
    if (event.state != XCB_PROPERTY_DELETE || m_sending == nullptr ||
        !m_connection.atomName(event.atom).contains("VALUE")) {
        return;
    }
    if (m_sent == m_sending->pieces) {
        if (m_sending->endsThen) {
            xcb_destroy_window(m_connection.get(), m_window);
            m_connection.flush();
        }
        return;
    }
    ++m_sent;
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, event.window, event.atom,
                        m_connection.atom(m_sending->type), 8, static_cast<quint32>(m_sending->data.size()),
                        m_sending->data.constData());
    m_connection.flush();
}

void RawSelectionOwner::answer(const xcb_selection_request_event_t &request)
{
    const QByteArray target = m_connection.atomName(request.target);
    {
        const std::lock_guard lock(m_mutex);
        m_requested.push_back(target);
    }
    xcb_atom_t property = request.property;
    const auto found =
        std::find_if(m_values.begin(), m_values.end(), [&target](const auto &value) { return value.first == target; });
    if (target == "TARGETS") {
        std::vector<xcb_atom_t> atoms = {request.target};
        for (const auto &value : m_values) {
            atoms.push_back(m_connection.atom(value.first));
        }
        for (std::uint32_t count = 0; count < m_unknownTargets; ++count) {
            atoms.push_back(firstUnknownAtom + count);
        }
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM, 32,
                            static_cast<quint32>(atoms.size()), atoms.data());
    } else if (found == m_values.end() || found->second.isRefused) {
        property = XCB_ATOM_NONE;
    } else if (found->second.isIgnored) {
        return;
    } else if (found->second.pieces > 0) {
        m_sending = &found->second;
        m_sent = 0;
        constexpr std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection.get(), request.requestor, XCB_CW_EVENT_MASK, &events);
        const std::uint32_t announced = 10;
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
                            m_connection.atom("INCR"), 32, 1, &announced);
    } else {
        const auto &value = found->second;
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
                            m_connection.atom(value.type), static_cast<quint8>(value.unitBits),
                            static_cast<quint32>(value.data.size() / (value.unitBits / 8)), value.data.constData());
    }
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = property;
    std::array<char, 32> wire{};
    std::memcpy(wire.data(), &notify, sizeof(notify));
    xcb_send_event(m_connection.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
    m_connection.flush();
}

} // namespace talmo::test
