#include "Files/PrivateFile.h"

#include "Base/Error.h"
#include "Recognition/PocketSphinx/MicrophoneCalibrationStore.h"
#include "Support/FileSizeLimit.h"
#include "Support/Printing.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace talmo::test {

namespace {

class PrivateFileTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(u"file"_s);
    mode_t before = umask(0);

    ~PrivateFileTest() override { umask(before); }

    static unsigned modeOf(const QString &name)
    {
        struct stat status{};
        EXPECT_EQ(stat(QFile::encodeName(name).constData(), &status), 0) << name.toStdString();
        return status.st_mode & 0777U;
    }
    QByteArray content() const
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(PrivateFileTest, createsPrivateFoldersAtEveryLevel)
{
    PrivateFile::makeFolder(folder.filePath(u"a/b/c"_s));
    for (const auto &name : {u"a"_s, u"a/b"_s, u"a/b/c"_s}) {
        EXPECT_EQ(modeOf(folder.filePath(name)), 0700U) << name.toStdString();
    }
}

TEST_F(PrivateFileTest, tightensFolderAndLeavesItsParents)
{
    ASSERT_EQ(mkdir(QFile::encodeName(folder.filePath(u"a"_s)).constData(), 0755), 0);
    ASSERT_EQ(mkdir(QFile::encodeName(folder.filePath(u"a/b"_s)).constData(), 0755), 0);
    PrivateFile::makeFolder(folder.filePath(u"a/b"_s));
    EXPECT_EQ(modeOf(folder.filePath(u"a"_s)), 0755U);
    EXPECT_EQ(modeOf(folder.filePath(u"a/b"_s)), 0700U);
}

TEST_F(PrivateFileTest, uncreatableFolderIsAnError)
{
    PrivateFile::write(path, "a file");
    EXPECT_THROW(PrivateFile::makeFolder(path + u"/a"_s), Error);
}

TEST_F(PrivateFileTest, replacesContentPrivately)
{
    PrivateFile::write(path, "one");
    EXPECT_EQ(modeOf(path), 0600U);
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0666), 0);
    PrivateFile::write(path, "two");
    EXPECT_EQ(content(), "two");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"file"_s});
}

TEST_F(PrivateFileTest, fullDiskIsAnErrorAndKeepsOldContent)
{
    PrivateFile::write(path, "one");
    {
        const FileSizeLimit full(2);
        EXPECT_THROW(PrivateFile::write(path, "three"), Error);
        EXPECT_THROW(PrivateFile::write(path, QByteArray(1000000, 'x')), Error);
    }
    EXPECT_EQ(content(), "one");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"file"_s});
}

TEST_F(PrivateFileTest, tightensLooseLock)
{
    ::close(PrivateFile::openLock(path));
    EXPECT_EQ(modeOf(path), 0600U);
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0644), 0);
    ::close(PrivateFile::openLock(path));
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_LT(PrivateFile::openLock(folder.path()), 0);
}

TEST_F(PrivateFileTest, microphoneMemoryIsPrivateAndRetriedAfterFullDisk)
{
    const QString memory = folder.filePath(u"state/microphones.json"_s);
    MicrophoneCalibrationStore microphones(memory);
    {
        const FileSizeLimit full(0);
        microphones.remember(u"desk"_s, {1, 2});
    }
    EXPECT_FALSE(QFile::exists(memory));
    microphones.remember(u"desk"_s, {1, 2});
    EXPECT_EQ(modeOf(memory), 0600U);
    EXPECT_EQ(modeOf(folder.filePath(u"state"_s)), 0700U);
}

} // namespace talmo::test
