#include "Platform/Linux/X11/XProperty.h"

#include "Platform/Linux/X11/XConnection.h"

#include <QGuiApplication>
#include <QHash>

namespace talmo {

QByteArray xProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name)
{
    constexpr quint32 longest = 1024 * 1024 / 4;
    const auto cookie = xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
    return reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

QList<quint32> xNumbers(const QByteArray &property)
{
    QList<quint32> numbers(property.size() / qsizetype(sizeof(quint32)));
    if (numbers.isEmpty()) {
        return numbers;
    }
    std::memcpy(numbers.data(), property.constData(), static_cast<std::size_t>(numbers.size()) * sizeof(quint32));
    return numbers;
}

xcb_connection_t *applicationConnection()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_window_t applicationRoot()
{
    return xcb_setup_roots_iterator(xcb_get_setup(applicationConnection())).data->root;
}

xcb_atom_t applicationAtom(const char *name)
{
    static QHash<QByteArray, xcb_atom_t> atoms;
    auto &atom = atoms[name];
    if (atom == XCB_ATOM_NONE) {
        const auto cookie = xcb_intern_atom(applicationConnection(), 0, static_cast<quint16>(std::strlen(name)), name);
        const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(applicationConnection(), cookie, nullptr));
        atom = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
    return atom;
}

} // namespace talmo
