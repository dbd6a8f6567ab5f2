#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>

#include <gtest/gtest.h>

namespace talmo::test {

/// Archives of what passes for a model as long as nothing loads it, and of a library, each in a folder of that name.
class ToyArchives {
public:
    explicit ToyArchives(const QString &folder)
        : m_folder(folder)
    {
    }

    /// Makes NAME.tar.gz.
    void addModel(const QString &name) const
    {
        write(name + QStringLiteral("/model.onnx"), QByteArray("\x08") + QByteArray(5000, 'x'));
        write(name + QStringLiteral("/tokens.txt"), "<blk> 0\na 1\nb 2\n");
        pack(name);
    }
    /// Makes NAME.tar.gz, laid out as the maker's.
    void addLibrary(const QString &name, const QString &library) const
    {
        const QString place = m_folder + QLatin1Char('/') + name + QStringLiteral("/lib/libsherpa-onnx-c-api.so");
        makeFolderOf(place);
        QFile::remove(place);
        EXPECT_TRUE(QFile::copy(library, place));
        pack(name);
    }

private:
    static void makeFolderOf(const QString &place) { QDir().mkpath(place.section(QLatin1Char('/'), 0, -2)); }
    void write(const QString &path, const QByteArray &content) const
    {
        const QString place = m_folder + QLatin1Char('/') + path;
        makeFolderOf(place);
        QFile file(place);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
    }
    void pack(const QString &name) const
    {
        EXPECT_EQ(QProcess::execute(QStringLiteral("tar"),
                                    {QStringLiteral("-C"), m_folder, QStringLiteral("-czf"),
                                     m_folder + QLatin1Char('/') + name + QStringLiteral(".tar.gz"), name}),
                  0);
    }

    QString m_folder;
};

} // namespace talmo::test
