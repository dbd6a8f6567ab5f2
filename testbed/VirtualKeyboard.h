#pragma once

#include "Platform/Linux/X11/XConnection.h"

namespace talmo::testbed {

/// Presses keys on the display that DISPLAY names.
class VirtualKeyboard {
public:
    static constexpr quint32 tab = 0xff09;
    static constexpr quint32 controlLeft = 0xffe3;
    static constexpr quint32 controlRight = 0xffe4;
    static constexpr quint32 shiftLeft = 0xffe1;
    static constexpr quint32 superLeft = 0xffeb;

    void press(quint32 keySym);
    void release(quint32 keySym);
    void tap(quint32 keySym);

private:
    void send(quint32 keySym, quint8 type);

    XConnection m_connection;
};

} // namespace talmo::testbed
