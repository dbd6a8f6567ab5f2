#include "Control/ControlSocket.h"

#include "Control/LocalSockets.h"
#include "Support/AnotherUser.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::Contains;
using testing::HasSubstr;

} // namespace

TEST(ControlSocket, everyRequestNamesItsCommand)
{
    using ControlSocket::Command;
    using Key = ControlSocket::KeyCommand;
    EXPECT_EQ(ControlSocket::commandOf(ControlSocket::plainRequest(Command::OpenSettings)), Command::OpenSettings);
    EXPECT_EQ(ControlSocket::commandOf(ControlSocket::insertRequest(u"settings"_s)), Command::Insert);
    EXPECT_EQ(ControlSocket::commandOf(ControlSocket::recogniserRequest(u"sherpa"_s)), Command::UseRecogniser);
    EXPECT_EQ(ControlSocket::commandOf(ControlSocket::pauseRequest(true)), Command::Pause);
    EXPECT_EQ(ControlSocket::commandOf(ControlSocket::pauseRequest(false)), Command::Resume);
    EXPECT_EQ(ControlSocket::commandOf(ControlSocket::keyRequest(Key::Toggle)), Command::ToggleKey);
}

TEST(ControlSocket, garbageIsNoRequest)
{
    EXPECT_EQ(ControlSocket::commandOf("garbage\n"), std::nullopt);
    EXPECT_EQ(ControlSocket::commandOf("{}\n"), std::nullopt);
    EXPECT_EQ(ControlSocket::commandOf("{\"command\": 1}\n"), std::nullopt);
    EXPECT_EQ(ControlSocket::textToInsert("{\"command\": \"insert\", \"text\": 1}\n"), std::nullopt);
}

TEST(ControlSocket, byteOrderMarkIsNotPartOfText)
{
    EXPECT_EQ(ControlSocket::textToInsert(ControlSocket::insertRequest(u"\uFEFF\uFEFFhello \uFEFF"_s)),
              u"hello \uFEFF"_s);
}

TEST(ControlSocket, sendsNothingToAnotherUsersListener)
{
    if (!AnotherUser::isPossible()) {
        GTEST_SKIP() << "only root can act as another user";
    }
    const QTemporaryDir folder;
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
    RecordingLog log;
    const FileDescriptor listener = makeSocket();
    const auto address = addressOf(ControlSocket::path());
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    {
        const AnotherUser user;
        ASSERT_EQ(::listen(listener.get(), 1), 0);
    }
    EXPECT_EQ(ControlSocket::exchange(ControlSocket::plainRequest(ControlSocket::Command::OpenSettings), 1000, 1000),
              std::nullopt);
    const FileDescriptor accepted(::accept(listener.get(), nullptr, nullptr));
    char byte = 0;
    EXPECT_EQ(::recv(accepted.get(), &byte, 1, 0), 0) << "only the end of the connection";
    EXPECT_THAT(log.lines(), Contains(testing::Property(&QString::toStdString, HasSubstr("another user"))));
    qputenv("XDG_RUNTIME_DIR", before);
}

} // namespace talmo::test
