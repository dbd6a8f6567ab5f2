#include "Main/WordPronunciationsModel.h"

#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class WordPronunciationsModelTest : public testing::Test {
protected:
    QByteArray content() const
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void writeFile(const QByteArray &bytes) const
    {
        QDir().mkpath(folder.filePath(u"talmo"_s));
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
    }
    bool isWritten(int times)
    {
        return waitFor([this, times] { return writes == times; });
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"talmo/pronunciations.txt"_s);
    int writes = 0;
    WordPronunciationsModel model{path, SerialExecutor::onNewThread(u"writer"_s), SerialExecutor::onCurrentThread(),
                                  [this] { ++writes; }};
};

} // namespace

TEST_F(WordPronunciationsModelTest, readsTheFileOnRefresh)
{
    writeFile("Nguyen = win\n");
    EXPECT_EQ(model.of(u"Nguyen"_s), QString());
    int changes = 0;
    QObject::connect(&model, &Observable::objectWillChange, [&changes] { ++changes; });
    model.refresh();
    EXPECT_EQ(model.of(u"nguyen"_s), u"win"_s);
    model.refresh();
    EXPECT_EQ(changes, 1) << "unchanged the second time";
}

TEST_F(WordPronunciationsModelTest, addsChangeToExistingFile)
{
    writeFile("# mine\nNguyen = win\n");
    model.refresh();
    model.set(u"Xu"_s, u" shoe "_s);
    EXPECT_EQ(model.of(u"Xu"_s), u"shoe"_s);
    ASSERT_TRUE(isWritten(1));
    EXPECT_EQ(content(), "# mine\nNguyen = win\nXu = shoe\n");
    model.set(u"Nguyen"_s, {});
    ASSERT_TRUE(isWritten(2));
    EXPECT_EQ(content(), "# mine\nXu = shoe\n");
    EXPECT_EQ(model.of(u"Nguyen"_s), QString());
}

TEST_F(WordPronunciationsModelTest, createsFolderAndFile)
{
    model.set(u"Xu"_s, u"shoe"_s);
    ASSERT_TRUE(isWritten(1));
    EXPECT_EQ(content(), "Xu = shoe\n");
}

TEST_F(WordPronunciationsModelTest, unchangedSoundIsNotWritten)
{
    model.set(u"Xu"_s, {});
    model.set(u"Xu"_s, u"shoe"_s);
    model.set(u"xu"_s, u"shoe"_s);
    ASSERT_TRUE(isWritten(1));
    settle();
    EXPECT_EQ(writes, 1);
}

TEST_F(WordPronunciationsModelTest, failureIsLogged)
{
    const RecordingLog log;
    QDir().mkpath(path); // A folder where the file should be.
    model.set(u"Xu"_s, u"shoe"_s);
    ASSERT_TRUE(isWritten(1));
    EXPECT_EQ(log.lines().size(), 1U);
}

} // namespace talmo::test
