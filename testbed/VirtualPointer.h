#pragma once

#include "Platform/Linux/X11/XConnection.h"

#include <QPoint>

namespace talmo::testbed {

/// Moves and clicks the mouse on the display that DISPLAY names.
class VirtualPointer {
public:
    void moveTo(QPoint place);
    void click(quint8 button = 1);
    void clickAt(QPoint place);

private:
    XConnection m_connection;
};

} // namespace talmo::testbed
