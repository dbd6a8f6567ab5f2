#include "Platform/Linux/X11/XConnection.h"

#include "Base/Error.h"

namespace talmo {

XConnection::XConnection()
{
    int screenNumber = 0;
    m_connection = xcb_connect(nullptr, &screenNumber);
    if (isBroken()) {
        xcb_disconnect(m_connection);
        throw Error(QStringLiteral("No X display could be opened. Is DISPLAY set?"));
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    while (screenNumber-- > 0 && screens.rem > 1) {
        xcb_screen_next(&screens);
    }
    m_screen = screens.data;
}

XConnection::~XConnection()
{
    xcb_disconnect(m_connection);
}

xcb_atom_t XConnection::atom(const QByteArray &name)
{
    if (const auto known = m_atoms.constFind(name); known != m_atoms.cend()) {
        return *known;
    }
    const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<quint16>(name.size()), name.constData());
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    if (!reply) {
        return XCB_ATOM_NONE;
    }
    m_atoms.insert(name, reply->atom);
    return reply->atom;
}

QByteArray XConnection::atomName(xcb_atom_t atom)
{
    if (const auto known = m_names.constFind(atom); known != m_names.cend()) {
        return *known;
    }
    xcb_generic_error_t *error = nullptr;
    const XcbPtr<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), &error));
    const XcbPtr<xcb_generic_error_t> ownedError(error);
    if (!reply) {
        return {};
    }
    const QByteArray name(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    m_names.insert(atom, name);
    return name;
}

quint32 XConnection::clientOf(xcb_window_t window) const
{
    return window & ~xcb_get_setup(m_connection)->resource_id_mask;
}

} // namespace talmo
