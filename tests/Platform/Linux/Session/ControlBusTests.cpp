#include "Platform/Linux/Session/ControlBus.h"

#include "Base/Application.h"
#include "ChildProcess.h"
#include "Platform/Linux/Session/BusStates.h"
#include "Support/AnotherUser.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <optional>
#include <vector>

namespace talmo::test {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using KeyCommand = ControlSocket::KeyCommand;

namespace {

/// One that lets every user in, as some administrator may have configured his.
constexpr const char *busConfiguration = R"(<busconfig><type>session</type><listen>unix:path=%1</listen>
<auth>EXTERNAL</auth><policy context="default"><allow user="*"/><allow own="*"/>
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/></policy></busconfig>)";

class ControlBusTest : public testing::Test {
protected:
    void SetUp() override
    {
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ExeGroup |
                                                 QFile::ExeOther);
        const QString path = folder.filePath(u"bus"_s);
        QFile configuration(folder.filePath(u"bus.conf"_s));
        ASSERT_TRUE(configuration.open(QFile::WriteOnly));
        configuration.write(QString::fromLatin1(busConfiguration).arg(path).toUtf8());
        configuration.close();
        daemon = std::make_unique<testbed::ChildProcess>(
            u"dbus-daemon"_s,
            QStringList{u"--nofork"_s, u"--print-address=1"_s, u"--config-file="_s + configuration.fileName()},
            QProcessEnvironment::systemEnvironment());
        ASSERT_TRUE(daemon->waitForLine(u"unix:"_s, std::chrono::seconds(20)));
        address = u"unix:path="_s + path;
        ControlActions actions;
        actions.openSettings = [this] { settingsOpened += 1; };
        actions.lastDictation = [this](bool) { return text; };
        actions.moveKey = [this](KeyCommand command) { moves.push_back(command); };
        actions.status = [this] { return status; };
        control.emplace(connection(), actions);
        ASSERT_TRUE(control->open());
    }
    void TearDown() override
    {
        control.reset();
        for (const auto &name : connections) {
            QDBusConnection::disconnectFromBus(name);
        }
    }
    QDBusConnection connection()
    {
        static int number = 0;
        connections.append(u"control-bus-test-%1"_s.arg(++number));
        return QDBusConnection::connectToBus(address, connections.last());
    }
    QDBusMessage call(QDBusConnection bus, const QString &method,
                      const QString &interface = ControlBus::interfaceName())
    {
        const auto message =
            QDBusMessage::createMethodCall(bundleIdentifier(), ControlBus::objectPath(), interface, method);
        const QDBusPendingCallWatcher watcher(bus.asyncCall(message)); // Wakes the loop.
        EXPECT_TRUE(waitFor([&watcher] { return watcher.isFinished(); }));
        return watcher.reply();
    }
    QDBusMessage call(const QString &method) { return call(connection(), method); }

    RecordingLog log;
    QTemporaryDir folder;
    std::unique_ptr<testbed::ChildProcess> daemon;
    QString address;
    QStringList connections;
    std::optional<QString> text;
    ControlSocket::Status status{u"idle"_s, {}};
    std::vector<KeyCommand> moves;
    int settingsOpened = 0;
    std::optional<ControlBus> control;
};

} // namespace

TEST_F(ControlBusTest, keyMethodsMoveKeyInOrder)
{
    const auto bus = connection();
    for (const auto &method : {u"Press"_s, u"Release"_s, u"Toggle"_s, u"Cancel"_s}) {
        EXPECT_EQ(call(bus, method).type(), QDBusMessage::ReplyMessage) << method.toStdString();
    }
    EXPECT_THAT(moves, ElementsAre(KeyCommand::Press, KeyCommand::Release, KeyCommand::Toggle, KeyCommand::Cancel));
}

TEST_F(ControlBusTest, callsWithoutWaitingKeepTheirOrder)
{
    auto bus = connection();
    for (const auto &method : {u"Press"_s, u"Release"_s, u"Press"_s}) {
        bus.send(QDBusMessage::createMethodCall(bundleIdentifier(), ControlBus::objectPath(),
                                                ControlBus::interfaceName(), method));
    }
    ASSERT_TRUE(waitFor([this] { return moves.size() == 3; }));
    EXPECT_THAT(moves, ElementsAre(KeyCommand::Press, KeyCommand::Release, KeyCommand::Press));
}

TEST_F(ControlBusTest, statusReturnsStateAndMessage)
{
    status = {u"error"_s, u"No speech detected."_s};
    EXPECT_EQ(call(u"Status"_s).arguments(), QVariantList({u"error"_s, u"No speech detected."_s}));
}

TEST_F(ControlBusTest, lastTextFailsBeforeFirstDictation)
{
    const auto refusal = call(u"LastText"_s);
    EXPECT_EQ(refusal.errorName(), u"io.github.talmo.Talmo1.NothingDictated"_s);
    text = u"Hello world."_s;
    EXPECT_EQ(call(u"LastText"_s).arguments(), QVariantList({u"Hello world."_s}));
}

TEST_F(ControlBusTest, opensSettings)
{
    call(u"ShowSettings"_s);
    EXPECT_EQ(settingsOpened, 1);
}

TEST_F(ControlBusTest, unknownMethodsFail)
{
    EXPECT_EQ(call(u"Shout"_s).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(connection(), u"Press"_s, u"io.github.talmo.Other"_s).type(), QDBusMessage::ErrorMessage);
    EXPECT_THAT(moves, IsEmpty());
}

TEST_F(ControlBusTest, otherUsersAreRefused)
{
    if (!AnotherUser::isPossible()) {
        GTEST_SKIP() << "only root can act as another user";
    }
    std::optional<QDBusConnection> bus;
    {
        const AnotherUser other(AnotherUser::nobody);
        bus = connection();
    }
    ASSERT_TRUE(bus->isConnected());
    EXPECT_EQ(call(*bus, u"Press"_s).errorName(), u"org.freedesktop.DBus.Error.AccessDenied"_s);
    EXPECT_THAT(moves, IsEmpty());
}

TEST_F(ControlBusTest, introspectionIsDescription)
{
    QFile description(u":/bus/io.github.talmo.Talmo1.xml"_s);
    ASSERT_TRUE(description.open(QFile::ReadOnly));
    const auto reply = call(connection(), u"Introspect"_s, u"org.freedesktop.DBus.Introspectable"_s);
    const QString xml = reply.arguments().value(0).toString();
    for (const auto &method : {u"Press"_s, u"Release"_s, u"Toggle"_s, u"Cancel"_s, u"Status"_s, u"LastText"_s,
                               u"ShowSettings"_s, u"StateChanged"_s}) {
        EXPECT_THAT(xml.toStdString(), HasSubstr("name=\"" + method.toStdString() + "\""));
    }
    EXPECT_EQ(xml.count(u"<interface name=\"io.github.talmo.Talmo1\">"_s), 1);
}

TEST_F(ControlBusTest, everyDescribedMethodIsServed)
{
    QFile description(u":/bus/io.github.talmo.Talmo1.xml"_s);
    ASSERT_TRUE(description.open(QFile::ReadOnly));
    text = u"Hello."_s;
    const auto bus = connection();
    int methods = 0;
    for (const auto &line : QString::fromUtf8(description.readAll()).split(u'\n')) {
        const auto begin = line.indexOf(u"<method name=\""_s);
        if (begin >= 0) {
            const QString method = line.section(u'"', 1, 1);
            EXPECT_EQ(call(bus, method).type(), QDBusMessage::ReplyMessage) << method.toStdString();
            methods += 1;
        }
    }
    EXPECT_EQ(methods, 7);
}

TEST_F(ControlBusTest, unchangedStateIsNotAnnounced)
{
    auto bus = connection();
    QTimer announced; // Started by the signal.
    announced.setInterval(std::chrono::hours(1));
    ASSERT_TRUE(bus.connect({}, ControlBus::objectPath(), ControlBus::interfaceName(), u"StateChanged"_s, &announced,
                            SLOT(start())));
    call(bus, u"Status"_s); // The bus knows of the subscription then.
    control->tellState();
    call(bus, u"Status"_s); // Comes after the signal.
    EXPECT_FALSE(announced.isActive());
    status = {u"recording"_s, {}};
    control->tellState();
    EXPECT_TRUE(waitFor([&announced] { return announced.isActive(); }));
}

TEST_F(ControlBusTest, followersSeeEachChangeOnce)
{
    BusStates states(connection());
    std::vector<std::string> seen;
    QObject::connect(&states, &BusStates::stateChanged, &states, [&seen](const ControlSocket::Status &changed) {
        seen.push_back((changed.state + changed.message).toStdString());
    });
    ASSERT_TRUE(states.follow());
    ASSERT_TRUE(waitFor([&seen] { return seen.size() == 1; }));
    status = {u"recording"_s, {}};
    control->tellState();
    control->tellState();
    status = {u"error"_s, u"No speech detected."_s};
    control->tellState();
    ASSERT_TRUE(waitFor([&seen] { return seen.size() == 3; }));
    EXPECT_THAT(seen, ElementsAre("idle", "recording", "errorNo speech detected."));
}

TEST_F(ControlBusTest, followersLearnOfTheEnd)
{
    BusStates states(connection());
    bool hasEnded = false;
    QObject::connect(&states, &BusStates::ended, &states, [&hasEnded] { hasEnded = true; });
    ASSERT_TRUE(states.follow());
    control.reset();
    QDBusConnection::disconnectFromBus(connections.first());
    EXPECT_TRUE(waitFor([&hasEnded] { return hasEnded; }));
    EXPECT_FALSE(BusStates(connection()).follow());
}

TEST_F(ControlBusTest, secondTalmoGetsNoBusName)
{
    ControlActions actions;
    actions.status = [this] { return status; };
    ControlBus second(connection(), actions);
    EXPECT_FALSE(second.open());
    EXPECT_EQ(call(u"Press"_s).type(), QDBusMessage::ReplyMessage);
}

} // namespace talmo::test
