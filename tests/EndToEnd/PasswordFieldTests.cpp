// Password fields in real windows, over a real accessibility bus.

#include "EndToEnd/TalmoFixture.h"

#include "DesktopParts.h"
#include "Support/Printing.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QJsonObject>

namespace talmo::test {

namespace {

const QString gtk = QStringLiteral(TALMO_BIN "/talmo-entry-window");
const QString qt = QStringLiteral(TALMO_BIN "/talmo-qt-entry-window");

class PasswordFieldEndToEndTest : public TalmoFixture {
protected:
    PasswordFieldEndToEndTest()
    {
        environment.remove(u"NO_AT_BRIDGE"_s);
        environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    }

    /// Starts the accessibility bus as a desktop with accessibility does.
    void startAccessibility()
    {
        auto session = QDBusConnection::connectToBus(environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s), u"test"_s);
        const auto question =
            QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
        EXPECT_EQ(session.call(question).type(), QDBusMessage::ReplyMessage);
        QDBusConnection::disconnectFromBus(u"test"_s);
    }

    /// Runs talmoctl insert; returns its exit status.
    int insert(const QByteArray &text)
    {
        testbed::ChildProcess process(QStringLiteral(TALMO_BIN "/talmoctl"), {u"insert"_s}, environment);
        process.writeLine(QString::fromUtf8(text));
        process.closeInput();
        EXPECT_TRUE(testbed::waitUntil([&process] { return !process.isRunning(); }, timeout));
        output = process.output();
        return process.terminate();
    }

    std::unique_ptr<testbed::ChildProcess> bus = testbed::startBus(environment);
    QString output;
};

/// Runs for each toolkit; the parameter is the window's program.
class PasswordFieldToolkitTest : public PasswordFieldEndToEndTest, public testing::WithParamInterface<QString> {
protected:
    PasswordFieldToolkitTest() { startAccessibility(); }
};

} // namespace

TEST_P(PasswordFieldToolkitTest, passwordFieldGetsNothingAndReasonIsReported)
{
    openWindow(GetParam(), {u"password"_s});
    startTalmo();
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("hello"), 1);
    EXPECT_TRUE(output.contains(u"The cursor is in a password field, so nothing was pasted."_s))
        << output.toStdString();
    EXPECT_EQ(clipboard(), "clipboard before\n");
    EXPECT_FALSE(window->output().contains(u"text:"_s)) << window->output().toStdString();
    EXPECT_TRUE(bus->output().contains(u"org.a11y"_s)) << "the bus reports when it is started";
}

TEST_P(PasswordFieldToolkitTest, withoutTalmoPasswordFieldGetsNothing)
{
    openWindow(GetParam(), {u"password"_s});
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("hello"), 1);
    EXPECT_TRUE(output.contains(u"The cursor is in a password field, so nothing was pasted."_s))
        << output.toStdString();
    EXPECT_EQ(clipboard(), "clipboard before\n");
    EXPECT_FALSE(window->output().contains(u"text:"_s)) << window->output().toStdString();
}

TEST_P(PasswordFieldToolkitTest, withoutTalmoOrdinaryFieldGetsText)
{
    openWindow(GetParam(), {u"ordinary"_s});
    EXPECT_EQ(insert("hello"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"hello"_s));
}

TEST_P(PasswordFieldToolkitTest, ordinaryFieldInSameWindowGetsText)
{
    openWindow(GetParam(), {u"ordinary"_s});
    startTalmo();
    EXPECT_EQ(insert("hello"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"hello"_s));
}

TEST_P(PasswordFieldToolkitTest, disabledGuardInsertsIntoPasswordField)
{
    desktop.storeSettings({{u"linux.guardPasswordFields"_s, false}, {u"linux.languageModelAddress"_s, u"off"_s}});
    openWindow(GetParam(), {u"password"_s});
    startTalmo();
    EXPECT_EQ(insert("hello"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"hello"_s));
}

INSTANTIATE_TEST_SUITE_P(Toolkits, PasswordFieldToolkitTest, testing::Values(gtk, qt),
                         [](const auto &toolkit) { return toolkit.param == gtk ? "Gtk" : "Qt"; });

TEST_F(PasswordFieldEndToEndTest, checkDoesNotStartAccessibility)
{
    environment.insert(u"NO_AT_BRIDGE"_s, u"1"_s);
    environment.remove(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s);
    openWindow(gtk, {u"password"_s});
    startTalmo();
    EXPECT_EQ(insert("hello"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"hello"_s));
    EXPECT_FALSE(bus->output().contains(u"org.a11y"_s)) << bus->output().toStdString();
}

} // namespace talmo::test
