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

TEST(ControlSocket, settingsRequestIsNotAnInsertion)
{
    EXPECT_TRUE(ControlSocket::asksForSettings(ControlSocket::settingsRequest()));
    EXPECT_FALSE(ControlSocket::asksForSettings(ControlSocket::insertRequest(u"settings"_s)));
    EXPECT_FALSE(ControlSocket::textToInsert(ControlSocket::settingsRequest()).has_value());
    EXPECT_FALSE(ControlSocket::asksForSettings("garbage\n"));
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
    EXPECT_EQ(ControlSocket::exchange(ControlSocket::settingsRequest(), 1000, 1000), std::nullopt);
    const FileDescriptor accepted(::accept(listener.get(), nullptr, nullptr));
    char byte = 0;
    EXPECT_EQ(::recv(accepted.get(), &byte, 1, 0), 0) << "only the end of the connection";
    EXPECT_THAT(log.lines(), Contains(testing::Property(&QString::toStdString, HasSubstr("another user"))));
    qputenv("XDG_RUNTIME_DIR", before);
}

} // namespace talmo::test
