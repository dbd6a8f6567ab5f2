#include "VirtualPointer.h"

#include <xcb/xtest.h>

namespace talmo::testbed {

void VirtualPointer::moveTo(QPoint place)
{
    xcb_test_fake_input(m_connection.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_connection.root(),
                        static_cast<qint16>(place.x()), static_cast<qint16>(place.y()), 0);
    m_connection.flush();
}

void VirtualPointer::click(quint8 button)
{
    for (const auto type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
        xcb_test_fake_input(m_connection.get(), static_cast<quint8>(type), button, XCB_CURRENT_TIME,
                            m_connection.root(), 0, 0, 0);
    }
    m_connection.flush();
}

void VirtualPointer::clickAt(QPoint place)
{
    moveTo(place);
    click();
}

} // namespace talmo::testbed
