#pragma once

#include "Platform/Linux/System/FileDescriptor.h"

#include <QFile>

#include <algorithm>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>

namespace talmo::test {

inline sockaddr_un addressOf(const QString &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    EXPECT_LT(static_cast<std::size_t>(name.size()), sizeof(address.sun_path));
    std::copy(name.begin(), name.end(), address.sun_path);
    return address;
}

inline FileDescriptor makeSocket()
{
    return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

} // namespace talmo::test
