#pragma once

#include "Base/Log.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <source_location>
#include <utility>

namespace talmo::fuzz {

/// Aborts the process, which the fuzzer reports together with the input.
inline void require(bool holds, std::source_location location = std::source_location::current())
{
    if (!holds) {
        std::fprintf(stderr, "%s:%u: requirement violated\n", location.file_name(), location.line());
        std::abort();
    }
}

/// Drops the log: most inputs are damaged, and logging that takes longer than detecting it.
class SilentLog final : public LogSink {
public:
    static void install() { setLogSink(std::make_shared<SilentLog>()); }
    bool isEnabled(LogLevel /*level*/, const char * /*category*/) const override { return false; }
    void write(LogLevel /*level*/, const char * /*category*/, const char * /*format*/,
               std::initializer_list<QVariant> /*arguments*/) override
    {
    }
};

/// A folder that is deleted with the process, in memory if possible, since every input writes files.
inline const QString &scratchFolder()
{
    static const QTemporaryDir folder(
        (QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath()) +
        QStringLiteral("/talmo-fuzz-XXXXXX"));
    static const QString path = folder.path();
    return path;
}

inline QByteArray rest(FuzzedDataProvider &data)
{
    const auto bytes = data.ConsumeRemainingBytes<char>();
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

inline QByteArray bytesUpTo(FuzzedDataProvider &data, std::size_t most)
{
    return QByteArray::fromStdString(data.ConsumeRandomLengthString(most));
}

/// Half of them arbitrary UTF-16 code units, including lone surrogates.
inline QString textUpTo(FuzzedDataProvider &data, std::size_t most)
{
    const bool isUtf8 = data.ConsumeBool();
    const QByteArray bytes = bytesUpTo(data, most);
    return isUtf8 ? QString::fromUtf8(bytes)
                  : QString(reinterpret_cast<const QChar *>(bytes.constData()), bytes.size() / 2);
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    require(file.open(QFile::WriteOnly | QFile::Truncate) && file.write(content) == content.size());
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    require(file.open(QFile::ReadOnly));
    return file.readAll();
}

} // namespace talmo::fuzz
