#include "Recognition/Text/Pronunciation.h"

#include "Support/Printing.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

Pronunciation pronunciation(Pronunciation::SoundsLike soundsLike = {})
{
    static const QHash<QString, QByteArray> dictionary{
        {u"cloud"_s, "K L AW D"}, {u"formation"_s, "F AO R M EY SH AH N"}, {u"win"_s, "W IH N"}};
    return Pronunciation([](const QString &word) { return dictionary.value(word); }, std::move(soundsLike));
}

} // namespace

TEST(SpokenParts, splitSpellingIntoWords)
{
    EXPECT_EQ(spokenParts(u"CloudFormation"_s), (QStringList{u"Cloud"_s, u"Formation"_s}));
    EXPECT_EQ(spokenParts(u"Xylophone Works"_s), (QStringList{u"Xylophone"_s, u"Works"_s}));
    EXPECT_EQ(spokenParts(u"MySQLServer"_s), (QStringList{u"My"_s, u"SQL"_s, u"Server"_s}));
    EXPECT_EQ(spokenParts(u"O'Neill-Smith"_s), (QStringList{u"O"_s, u"Neill"_s, u"Smith"_s}));
    EXPECT_EQ(spokenParts(u"Kubernetes"_s), QStringList{u"Kubernetes"_s});
    EXPECT_EQ(spokenParts(u"Mary's"_s), QStringList{u"Mary's"_s});
    EXPECT_EQ(spokenParts(u"k8s"_s), (QStringList{u"k"_s, u"8"_s, u"s"_s}));
    EXPECT_EQ(spokenParts(u"!!!"_s), QStringList());
}

TEST(Pronunciation, usesDictionaryAndSpellsOutTheRest)
{
    EXPECT_EQ(pronunciation().of(u"CloudFormation"_s), "K L AW D F AO R M EY SH AH N");
    EXPECT_EQ(pronunciation().of(u"SQL"_s), "EH S K Y UW EH L");
    EXPECT_EQ(pronunciation().of(u"Grafana"_s).split(' ').first(), "G");
    EXPECT_EQ(pronunciation().of(u"日本"_s), "");
    EXPECT_EQ(pronunciation().of({}), "");
}

TEST(Pronunciation, usersPronunciationWins)
{
    EXPECT_EQ(pronunciation({{u"nguyen"_s, u"win"_s}}).of(u"Nguyen"_s), "W IH N");
    EXPECT_EQ(pronunciation({{u"cloud"_s, u"win"_s}}).of(u"Cloud"_s), "W IH N");
}

TEST(Pronunciation, ignoresAccents)
{
    EXPECT_EQ(pronunciation().of(u"Zsófia"_s), pronunciation().of(u"Zsofia"_s));
    EXPECT_EQ(pronunciation().of(u"Wrocław"_s), pronunciation().of(u"Wroclaw"_s));
}

TEST(Pronunciation, readsUsersPronunciationFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"pronunciations.txt"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("# names\nNguyen = win\n\ngarbage\n= nothing\nSiobhan=shiv awn\nempty =\n\xff\xfe = x\n");
    file.close();
    const auto read = Pronunciation::readSoundsLike(file.fileName());
    EXPECT_EQ(read.value(u"nguyen"_s), u"win"_s);
    EXPECT_EQ(read.value(u"siobhan"_s), u"shiv awn"_s);
    EXPECT_EQ(read.size(), 3);
    EXPECT_TRUE(Pronunciation::readSoundsLike(folder.filePath(u"none"_s)).isEmpty());
}

} // namespace talmo::test
