// Pronunciations beside the words, and the dictionary as a file.

#include "UI/Settings/Words/WordFiles.h"

#include "Support/FakePronunciations.h"
#include "Support/RecordingLog.h"
#include "UI/AccessibleView.h"
#include "UI/Settings/DictionarySettingsTab.h"
#include "UI/Settings/Words/WordList.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace talmo::test {

namespace {

class WordFilesTest : public testing::Test {
protected:
    WordFilesTest()
    {
        world.pronunciations = sounds;
        sounds->sounds = {{u"Nguyen"_s, u"win"_s}};
        world.settings->setDictionaryWords({u"Talmo"_s, u"Nguyen"_s});
        tab = std::make_unique<DictionarySettingsTab>(world.context());
        settle();
        tab->show();
    }
    WordList &list() { return *tab->findChild<WordList *>(); }
    WordFiles &files()
    {
        return *dynamic_cast<WordFiles *>(accessibleWidget(*tab, QAccessible::Button, u"Import…"_s)->parentWidget());
    }
    QLineEdit &sound()
    {
        return *qobject_cast<QLineEdit *>(accessibleWidget(*tab, QAccessible::EditableText, u"Sounds like"_s));
    }
    QStringList texts() { return accessibleNames(*tab, QAccessible::StaticText); }
    QString write(const QByteArray &bytes)
    {
        const QString path = folder.filePath(u"words.txt"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
        return path;
    }

    QTemporaryDir folder;
    ViewWorld world;
    std::shared_ptr<FakePronunciations> sounds = std::make_shared<FakePronunciations>();
    std::unique_ptr<DictionarySettingsTab> tab;
};

} // namespace

TEST_F(WordFilesTest, showsWhatWordsSoundLike)
{
    EXPECT_GT(sounds->refreshes, 0) << "the user may have edited the file";
    EXPECT_EQ(list().sound(0), QString());
    EXPECT_EQ(list().sound(1), u"win"_s);
    EXPECT_EQ(list().item(1)->data(Qt::AccessibleTextRole).toString(), u"Nguyen, sounds like win"_s);
    sounds->set(u"Talmo"_s, u"tall mow"_s);
    settle();
    EXPECT_EQ(list().sound(0), u"tall mow"_s);
}

TEST_F(WordFilesTest, fieldChangesSoundOfTheSelectedWord)
{
    EXPECT_FALSE(sound().isEnabled());
    list().setCurrentRow(1);
    EXPECT_TRUE(sound().isEnabled());
    EXPECT_EQ(sound().text(), u"win"_s);
    sound().setText(u"when"_s);
    QTest::keyClick(&sound(), Qt::Key_Return);
    EXPECT_EQ(sounds->of(u"Nguyen"_s), u"when"_s);
    settle();
    EXPECT_EQ(list().sound(1), u"when"_s);
    list().setCurrentRow(0);
    EXPECT_EQ(sound().text(), QString());
    list().selectAll();
    EXPECT_FALSE(sound().isEnabled()) << "of which word?";
}

TEST_F(WordFilesTest, soundIsPaintedBesideTheWord)
{
    const auto drawn = [this] {
        QImage image(list().size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        list().render(&image);
        return image;
    };
    const QImage with = drawn();
    sounds->set(u"Nguyen"_s, {});
    settle();
    const QImage without = drawn();
    const QRect row = list().visualItemRect(list().item(1)).translated(list().viewport()->pos());
    const QRect half = row.adjusted(row.width() / 2, 0, 0, 0);
    EXPECT_NE(with.copy(half), without.copy(half));
    const QRect wordHalf = row.adjusted(0, 0, -row.width() / 2, 0);
    EXPECT_EQ(with.copy(wordHalf), without.copy(wordHalf));
}

TEST_F(WordFilesTest, importAddsWordsAndSounds)
{
    files().importFrom(write("# from the other computer\nTalmo\nXu = shoe\nKubernetes\n"));
    EXPECT_EQ(world.settings->dictionaryWords(), (QStringList{u"Talmo"_s, u"Nguyen"_s, u"Xu"_s, u"Kubernetes"_s}));
    EXPECT_EQ(sounds->of(u"Xu"_s), u"shoe"_s);
    EXPECT_EQ(sounds->of(u"Nguyen"_s), u"win"_s);
    EXPECT_TRUE(texts().contains(u"New words: 2"_s));
}

TEST_F(WordFilesTest, importOfKnownWordsWritesNothing)
{
    world.defaults->takeWrites();
    files().importFrom(write("Talmo\n"));
    EXPECT_TRUE(world.defaults->writes.empty());
    EXPECT_TRUE(texts().contains(u"New words: 0"_s));
}

TEST_F(WordFilesTest, importRefusesNonText)
{
    const QString refusal = u"This file could not be read as text. Choose a text file with one word per line."_s;
    files().importFrom(write(QByteArray("PK\0\1", 4)));
    EXPECT_TRUE(texts().contains(refusal));
    files().importFrom(write("Talmo\n"));
    EXPECT_FALSE(texts().contains(refusal));
    files().importFrom(folder.filePath(u"missing"_s));
    EXPECT_TRUE(texts().contains(refusal));
    EXPECT_EQ(world.settings->dictionaryWords().size(), 2);
}

TEST_F(WordFilesTest, exportWritesWordsAndSounds)
{
    const QString path = folder.filePath(u"exported.txt"_s);
    files().exportTo(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_EQ(file.readAll(), "Talmo\nNguyen = win\n");
    EXPECT_TRUE(texts().contains(u"Words saved: 2"_s));
}

TEST_F(WordFilesTest, failedExportSuggestsRemedy)
{
    const RecordingLog log;
    files().exportTo(folder.filePath(u"no/such/folder.txt"_s));
    EXPECT_TRUE(
        texts().contains(u"The words could not be saved there. Choose another folder, or free some disk space."_s));
    EXPECT_EQ(log.lines().size(), 1U);
}

} // namespace talmo::test
