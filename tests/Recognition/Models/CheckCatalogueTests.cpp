// scripts/check-catalogue, against a list on a server on loopback.

#include "Support/Printing.h"
#include "Support/TestFileServer.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::HasSubstr;

const QByteArray oneSum(64, 'a');
const QByteArray anotherSum(64, 'b');

class CheckCatalogueTest : public testing::Test {
protected:
    CheckCatalogueTest()
    {
        write(u"models.json"_s, "{\"models\": [{\"id\": \"toy\", \"address\": \"https://example.org/r1/toy.tar.bz2\", "
                                "\"sha256\": \"" +
                                    oneSum + "\"}]}");
    }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(files.filePath(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
    }
    /// Compares with that list; returns the exit status.
    int compare(const QByteArray &list)
    {
        write(u"checksum.txt"_s, list);
        QProcess script;
        script.start(QStringLiteral(TALMO_SOURCE "/scripts/check-catalogue"),
                     {u"--catalogue"_s, files.filePath(u"models.json"_s), u"--list"_s,
                      u"r1="_s + server.address(u"/checksum.txt"_s)});
        EXPECT_TRUE(script.waitForFinished());
        output = script.readAllStandardOutput().toStdString();
        return script.exitCode();
    }

    QTemporaryDir files;
    TestFileServer server{files.path()};
    std::string output;
};

} // namespace

TEST_F(CheckCatalogueTest, acceptsCatalogueThatAgreesWithList)
{
    EXPECT_EQ(compare("other.tar.bz2 " + anotherSum + "\ntoy.tar.bz2 " + oneSum + "\n"), 0);
    EXPECT_THAT(output, HasSubstr("1 of 1 compared, 0 to be looked at"));
}

TEST_F(CheckCatalogueTest, namesRenewedAndWithdrawnFiles)
{
    EXPECT_EQ(compare("toy.tar.bz2 " + anotherSum + "\n"), 1);
    EXPECT_THAT(output, HasSubstr("toy was renewed"));
    EXPECT_EQ(compare("other.tar.bz2 " + anotherSum + "\n"), 1);
    EXPECT_THAT(output, HasSubstr("toy is not in the list"));
}

TEST_F(CheckCatalogueTest, unreadableListCountsAsNotCompared)
{
    EXPECT_EQ(compare("<html>Not found</html>"), 2);
    EXPECT_THAT(output, HasSubstr("not compared: toy"));
}

} // namespace talmo::test
