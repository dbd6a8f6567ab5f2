#pragma once

#include "Base/Error.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <functional>

#include <gtest/gtest.h>

namespace talmo::test {

/// The message of the Error that the call throws; empty if it throws none.
inline QString errorOf(const std::function<void()> &call)
{
    try {
        call();
    } catch (const Error &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(content);
}

} // namespace talmo::test
