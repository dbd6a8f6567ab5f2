#include <gmock/gmock.h>

#include <QApplication>

/// Runs the views offscreen.
int main(int argc, char **argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(QFont(QStringLiteral("Sans"), 10)); // An ordinary desktop's.
    return RUN_ALL_TESTS();
}
