#include "Platform/Linux/System/LinuxServerTrust.h"

#include "Platform/Linux/System/FileDescriptor.h"
#include "Platform/Linux/System/TcpOwners.h"
#include "Support/AnotherUser.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace talmo::test {

namespace {

constexpr int listening = 0x0A;
constexpr int established = 0x01;
constexpr int closing = 0x06;

const QByteArray here = "0100007F";
const QByteArray anywhere = "00000000";
const QByteArray here6 = "00000000000000000000000001000000";
const QByteArray anywhere6 = "00000000000000000000000000000000";
const QByteArray mappedHere = "0000000000000000FFFF00000100007F";
const QByteArray elsewhere = "0200007F";

/// A line in the format of /proc/net/tcp. The server's port is 8080, the client's 50000.
QByteArray row(const QByteArray &local, const QByteArray &remote, int state, unsigned user, unsigned inode)
{
    return "   0: " + local + ' ' + remote + ' ' + QByteArray::number(state, 16).rightJustified(2, '0') +
           " 00000000:00000000 00:00000000 00000000 " + QByteArray::number(user).rightJustified(5) + "        0 " +
           QByteArray::number(inode) + " 1 0000000054069c47 20 0 0 10 -1\n";
}

QByteArray listener(const QByteArray &address, unsigned user)
{
    return row(address + ":1F90", anywhere + ":0000", listening, user, 1);
}

QByteArray connection(unsigned user, unsigned inode, int state = established)
{
    return row(here + ":1F90", here + ":C350", state, user, inode);
}

const QByteArray heading =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n";
/// The client's end of the same connection.
const QByteArray ownEnd = row(here + ":C350", here + ":1F90", established, 1000, 77);

std::optional<uid_t> owner(const QByteArray &tcp, const QByteArray &tcp6 = {})
{
    return serverOwner(heading + ownEnd + tcp, heading + tcp6, {QHostAddress(u"127.0.0.1"_s), 8080},
                       {QHostAddress(u"127.0.0.1"_s), 50000});
}

} // namespace

TEST(ServerOwner, isUserOfAcceptedConnection)
{
    EXPECT_EQ(owner(listener(here, 1001) + connection(1002, 5)), 1002U);
    EXPECT_EQ(owner({}, row(mappedHere + ":1F90", mappedHere + ":C350", established, 1003, 5)), 1003U);
}

TEST(ServerOwner, isUnknownWithoutConnection)
{
    EXPECT_EQ(owner({}), std::nullopt);
    EXPECT_EQ(owner(listener(here, 1001)), std::nullopt);
    EXPECT_EQ(owner(connection(1002, 5, closing)), std::nullopt);
    EXPECT_EQ(owner(row(here + ":1F90", here + ":C351", established, 1002, 5)), std::nullopt);
    EXPECT_EQ(owner(row(elsewhere + ":1F90", here + ":C350", established, 1002, 5)), std::nullopt);
}

TEST(ServerOwner, isListenersUserUntilAccepted)
{
    // Older kernels report root as the owner of a connection not yet accepted.
    EXPECT_EQ(owner(listener(here, 1001) + connection(0, 0)), 1001U);
    EXPECT_EQ(owner(connection(0, 0)), std::nullopt) << "without a listener";
    constexpr int deferred = 3;
    EXPECT_EQ(owner(listener(here, 1001) + connection(0, 0, deferred)), 1001U);
}

TEST(ServerOwner, prefersMostSpecificListener)
{
    const QByteArray pending = connection(0, 0);
    EXPECT_EQ(owner(pending + listener(anywhere, 1) + listener(here, 2), listener(anywhere6, 3)), 2U);
    EXPECT_EQ(owner(pending + listener(anywhere, 1), listener(mappedHere, 2)), 2U);
    EXPECT_EQ(owner(pending + listener(anywhere, 1), listener(anywhere6, 3)), 1U);
    EXPECT_EQ(owner(pending, listener(anywhere6, 3)), 3U);
    EXPECT_EQ(owner(pending + listener(elsewhere, 1), listener(here6, 3)), std::nullopt);
}

TEST(ServerOwner, isUnknownIfListenersOfDifferentUsersSharePort)
{
    const QByteArray pending = connection(0, 0);
    EXPECT_EQ(owner(pending + listener(here, 1) + listener(here, 1)), 1U);
    EXPECT_EQ(owner(pending + listener(here, 1) + listener(here, 2)), std::nullopt);
    EXPECT_EQ(owner(pending + listener(here, 1) + listener(here, 2) + listener(here, 1)), std::nullopt);
    EXPECT_EQ(owner(pending + listener(anywhere, 1) + listener(anywhere, 2) + listener(here, 3)), 3U);
}

TEST(ServerOwner, readsIpv6Entries)
{
    const auto owner6 = [](const QByteArray &tcp6) {
        return serverOwner({}, tcp6, {QHostAddress(u"::1"_s), 8080}, {QHostAddress(u"::1"_s), 50000});
    };
    EXPECT_EQ(owner6(row(here6 + ":1F90", here6 + ":C350", established, 7, 5)), 7U);
    EXPECT_EQ(owner6(row(here6 + ":1F90", here6 + ":C350", established, 0, 0) + listener(anywhere6, 8)), 8U);
    EXPECT_EQ(owner6(row(here6 + ":1F90", here6 + ":C350", established, 0, 0) + listener(anywhere, 8)), std::nullopt);
}

TEST(ServerOwner, handlesMalformedInput)
{
    for (const QByteArray &text :
         {QByteArray(), QByteArray("\n\n"), QByteArray("1: 2 3 4 5 6 7 8 9 10"),
          QByteArray("0: 0100007F:1F90 0100007F:C350 01 x x x -1 0 5"), QByteArray(100000, ':'),
          QByteArray("0: 0100007Z:1F90 0100007F:C350 01 x x x 0 0 5")}) {
        EXPECT_EQ(owner(text, text), std::nullopt) << text.left(60).toStdString();
    }
}

namespace {

/// A real listener and a connection to it, each made by this process as some user.
class Conversation {
public:
    Conversation()
        : m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(m_address);
        EXPECT_EQ(::bind(m_listener.get(), plain(m_address), size), 0);
        EXPECT_EQ(::listen(m_listener.get(), 1), 0);
        EXPECT_EQ(::getsockname(m_listener.get(), plain(m_address), &size), 0);
    }
    void connect()
    {
        m_client = FileDescriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(::connect(m_client.get(), plain(m_address), sizeof(m_address)), 0);
    }
    void accept() { m_accepted = FileDescriptor(::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC)); }
    bool isTrusted(const LinuxServerTrust &trust) const
    {
        sockaddr_in own{};
        socklen_t size = sizeof(own);
        EXPECT_EQ(::getsockname(m_client.get(), plain(own), &size), 0);
        return trust.isTrusted({QHostAddress(QHostAddress::LocalHost), ntohs(m_address.sin_port)},
                               {QHostAddress(QHostAddress::LocalHost), ntohs(own.sin_port)});
    }

private:
    static sockaddr *plain(sockaddr_in &address) { return reinterpret_cast<sockaddr *>(&address); }

    FileDescriptor m_listener;
    FileDescriptor m_client;
    FileDescriptor m_accepted;
    sockaddr_in m_address{};
};

} // namespace

TEST(LinuxServerTrust, trustsOwnServer)
{
    Conversation conversation;
    conversation.connect();
    EXPECT_TRUE(conversation.isTrusted(LinuxServerTrust()));
    conversation.accept();
    EXPECT_TRUE(conversation.isTrusted(LinuxServerTrust()));
    EXPECT_FALSE(conversation.isTrusted(LinuxServerTrust(u"/nonexistent"_s)));
}

TEST(LinuxServerTrust, distrustsOtherUsersServerAcceptedOrNot)
{
    if (!AnotherUser::isPossible()) {
        GTEST_SKIP() << "only root can act as another user";
    }
    std::optional<Conversation> theirs;
    {
        const AnotherUser user;
        theirs.emplace();
    }
    theirs->connect();
    EXPECT_FALSE(theirs->isTrusted(LinuxServerTrust()));
    {
        const AnotherUser user;
        theirs->accept();
    }
    EXPECT_FALSE(theirs->isTrusted(LinuxServerTrust()));
    EXPECT_TRUE(theirs->isTrusted(LinuxServerTrust(u"/proc/net"_s, AnotherUser::id)));
}

TEST(LinuxServerTrust, trustsSystemAccounts)
{
    if (!AnotherUser::isPossible()) {
        GTEST_SKIP() << "only root runs this as a system account";
    }
    Conversation roots;
    roots.connect();
    EXPECT_TRUE(roots.isTrusted(LinuxServerTrust(u"/proc/net"_s, AnotherUser::id)));
}

} // namespace talmo::test
