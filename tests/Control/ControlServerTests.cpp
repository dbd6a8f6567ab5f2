#include "Control/ControlServer.h"

#include "Base/Task.h"
#include "Control/ControlSocket.h"
#include "Control/LocalSockets.h"
#include "Platform/Linux/System/FileDescriptor.h"
#include "Support/AnotherUser.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace talmo::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ControlServerTest : public testing::Test {
protected:
    RecordingLog log;
    QTemporaryDir folder;
    QString path = folder.filePath(u"talmo:0"_s);
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::vector<QString> inserted;
    std::vector<bool> pauses;
    int menus = 0;
    std::vector<ControlSocket::KeyCommand> moves;
    std::optional<QString> trace;
    std::optional<QString> lastText;
    bool holdsEarlierClipboard = false;
    std::shared_ptr<Completion<void>> insertion;
    ControlServer server{{[this](const QString &text) { return insert(text); }, [] {},
                          [](const QString &) { return refuse(u"The settings could not be saved."_s); },
                          [this](bool) { return lastText; },
                          [this] { return makeReadyFuture(bool(holdsEarlierClipboard)); },
                          [this](bool isPaused) { pauses.push_back(isPaused); },
                          [this](ControlSocket::KeyCommand command) { moves.push_back(command); },
                          [] { return ControlSocket::Status{u"error"_s, u"No speech detected."_s}; },
                          [this] { ++menus; }, [this] { return trace; }},
                         clock};

    void SetUp() override { ASSERT_TRUE(server.listen(path)); }

    QCoro::Task<void> insert(QString text)
    {
        inserted.push_back(text);
        if (insertion) {
            co_await insertion->future();
        }
    }
    static QCoro::Task<void> refuse(QString why)
    {
        co_await makeReadyFuture();
        throw Error(why);
    }
    std::unique_ptr<QLocalSocket> connected() const
    {
        auto socket = std::make_unique<QLocalSocket>();
        socket->connectToServer(path);
        return socket;
    }
    /// Everything the server sends until it disconnects.
    static QByteArray answerOf(QLocalSocket &socket)
    {
        QByteArray answer;
        EXPECT_TRUE(waitFor([&] {
            answer += socket.readAll();
            return socket.state() == QLocalSocket::UnconnectedState;
        }));
        return answer + socket.readAll();
    }
    QByteArray answerTo(const QByteArray &request) const
    {
        const auto socket = connected();
        socket->write(request);
        return answerOf(*socket);
    }
};

} // namespace

TEST_F(ControlServerTest, socketIsPrivate)
{
    struct stat status{};
    ASSERT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077U, 0U);
}

TEST_F(ControlServerTest, answersOneRequestPerConnection)
{
    EXPECT_EQ(answerTo(ControlSocket::insertRequest(u"hello"_s)), ControlSocket::answer(std::nullopt));
    EXPECT_THAT(answerTo("{}\n").toStdString(), HasSubstr("Unknown request"));
    EXPECT_THAT(inserted, ElementsAre(u"hello"_s));
    EXPECT_EQ(clock->sleeperCount(), 0U);
}

TEST_F(ControlServerTest, unsavableChoiceIsAnError)
{
    EXPECT_THAT(answerTo(ControlSocket::recogniserRequest(u"toy"_s)).toStdString(), HasSubstr("could not be saved"));
}

TEST_F(ControlServerTest, movesKey)
{
    using ControlSocket::KeyCommand;
    for (const auto command : {KeyCommand::Press, KeyCommand::Release, KeyCommand::Toggle, KeyCommand::Cancel}) {
        EXPECT_EQ(answerTo(ControlSocket::keyRequest(command)), ControlSocket::answer(std::nullopt));
    }
    EXPECT_THAT(moves, ElementsAre(KeyCommand::Press, KeyCommand::Release, KeyCommand::Toggle, KeyCommand::Cancel));
}

TEST_F(ControlServerTest, returnsStatus)
{
    EXPECT_EQ(ControlSocket::answeredStatus(answerTo(ControlSocket::plainRequest(ControlSocket::Command::Status))),
              (ControlSocket::Status{u"error"_s, u"No speech detected."_s}));
}

TEST_F(ControlServerTest, togglesMenu)
{
    EXPECT_EQ(answerTo(ControlSocket::plainRequest(ControlSocket::Command::ToggleMenu)),
              ControlSocket::answer(std::nullopt));
    EXPECT_EQ(menus, 1);
    EXPECT_THAT(inserted, IsEmpty());
}

TEST_F(ControlServerTest, pausesAndResumes)
{
    EXPECT_EQ(answerTo(ControlSocket::pauseRequest(true)), ControlSocket::answer(std::nullopt));
    EXPECT_EQ(answerTo(ControlSocket::pauseRequest(false)), ControlSocket::answer(std::nullopt));
    EXPECT_THAT(pauses, ElementsAre(true, false));
    EXPECT_THAT(inserted, IsEmpty());
}

TEST_F(ControlServerTest, tellsLastDictationOrThatThereIsNone)
{
    EXPECT_THAT(answerTo(ControlSocket::lastDictationRequest(false)).toStdString(),
                HasSubstr("Nothing has been dictated yet."));
    lastText = u"Hello world."_s;
    EXPECT_EQ(ControlSocket::answeredText(answerTo(ControlSocket::lastDictationRequest(false))), lastText);
}

TEST_F(ControlServerTest, requestWithoutAnActionIsUnknown)
{
    ControlServer onlyRestores{{{}, {}, {}, {}, [] { return makeReadyFuture(true); }, {}}, clock, 200};
    path = folder.filePath(u"held"_s);
    ASSERT_TRUE(onlyRestores.listen(path));
    EXPECT_THAT(answerTo(ControlSocket::plainRequest(ControlSocket::Command::OpenSettings)).toStdString(),
                HasSubstr("Unknown request."));
    EXPECT_THAT(answerTo(ControlSocket::insertRequest(u"hello"_s)).toStdString(), HasSubstr("Unknown request."));
    EXPECT_THAT(answerTo(ControlSocket::insertRequest(QString(300, u'x'))).toStdString(), HasSubstr("too long"));
    EXPECT_EQ(answerTo(ControlSocket::plainRequest(ControlSocket::Command::RestoreClipboard)),
              ControlSocket::answer(std::nullopt));
}

TEST_F(ControlServerTest, restoresEarlierClipboardOrSaysThatThereIsNone)
{
    EXPECT_THAT(answerTo(ControlSocket::plainRequest(ControlSocket::Command::RestoreClipboard)).toStdString(),
                HasSubstr("There is no earlier clipboard to restore."));
    holdsEarlierClipboard = true;
    EXPECT_EQ(answerTo(ControlSocket::plainRequest(ControlSocket::Command::RestoreClipboard)),
              ControlSocket::answer(std::nullopt));
}

TEST_F(ControlServerTest, returnsTraceAfterADictation)
{
    EXPECT_THAT(answerTo(ControlSocket::plainRequest(ControlSocket::Command::LastTrace)).toStdString(),
                HasSubstr("Nothing has been dictated yet."));
    trace = u"recording 0.0"_s;
    EXPECT_EQ(ControlSocket::answeredText(answerTo(ControlSocket::plainRequest(ControlSocket::Command::LastTrace))),
              trace);
}

TEST_F(ControlServerTest, rejectsOtherUsersProgramUnread)
{
    if (!AnotherUser::isPossible()) {
        GTEST_SKIP() << "only root can act as another user";
    }
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0777), 0);
    const FileDescriptor stranger = makeSocket();
    const auto address = addressOf(path);
    {
        const AnotherUser user;
        ASSERT_EQ(::connect(stranger.get(), reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    }
    const QByteArray request = ControlSocket::insertRequest(u"hello"_s);
    ASSERT_EQ(::write(stranger.get(), request.constData(), static_cast<std::size_t>(request.size())), request.size());
    EXPECT_TRUE(waitFor([this] { return !log.lines().empty(); }));
    settle();
    char byte = 0;
    EXPECT_LE(::recv(stranger.get(), &byte, 1, MSG_DONTWAIT), 0);
    EXPECT_THAT(inserted, IsEmpty());
    EXPECT_THAT(log.lines(), Contains(testing::Property(&QString::toStdString, HasSubstr("another user"))));
}

TEST_F(ControlServerTest, overlongRequestIsRefused)
{
    const auto socket = connected();
    socket->write(QByteArray(ControlSocket::largestRequest + 1, 'a'));
    EXPECT_THAT(answerOf(*socket).toStdString(), HasSubstr("too long"));
    EXPECT_EQ(clock->sleeperCount(), 0U);
}

TEST_F(ControlServerTest, disconnectsClientWithIncompleteRequest)
{
    const auto socket = connected();
    socket->write("{\"command\"");
    ASSERT_TRUE(waitFor([this] { return clock->sleeperCount() == 1; }));
    clock->advance(std::chrono::milliseconds(4999));
    EXPECT_EQ(socket->state(), QLocalSocket::ConnectedState);
    clock->advance(std::chrono::milliseconds(1));
    EXPECT_THAT(answerOf(*socket).toStdString(), HasSubstr("too long to arrive"));
}

TEST_F(ControlServerTest, keepsClientWaitingForItsInsertion)
{
    insertion = Completion<void>::make();
    const auto socket = connected();
    socket->write(ControlSocket::insertRequest(u"hello"_s));
    ASSERT_TRUE(waitFor([this] { return !inserted.empty(); }));
    clock->advance(std::chrono::minutes(1));
    EXPECT_EQ(socket->state(), QLocalSocket::ConnectedState);
    insertion->finish();
    EXPECT_EQ(answerOf(*socket), ControlSocket::answer(std::nullopt));
}

TEST_F(ControlServerTest, rejectsClientBeyondTheLimit)
{
    std::vector<std::unique_ptr<QLocalSocket>> idle;
    constexpr std::size_t mostClients = 32;
    while (idle.size() < mostClients) {
        idle.push_back(connected());
        ASSERT_TRUE(waitFor([&] { return clock->sleeperCount() == idle.size(); }));
    }
    EXPECT_EQ(answerTo(ControlSocket::insertRequest(u"hello"_s)), QByteArray());
    EXPECT_THAT(inserted, IsEmpty());
    idle.clear();
    ASSERT_TRUE(waitFor([this] { return clock->sleeperCount() == 0; }));
    EXPECT_EQ(answerTo(ControlSocket::insertRequest(u"hello"_s)), ControlSocket::answer(std::nullopt));
}

} // namespace talmo::test
