#include "Recognition/Models/ModelArchive.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

namespace talmo::test {

namespace {

/// Generated archives in one folder, and another folder to unpack into.
class ModelArchiveTest : public testing::Test {
protected:
    void SetUp() override
    {
        QProcess maker;
        maker.start(u"python3"_s, {QStringLiteral(TALMO_TESTS_FOLDER "/Support/make_archives.py"), archives.path()});
        ASSERT_TRUE(maker.waitForFinished() && maker.exitCode() == 0) << maker.readAllStandardError().constData();
        ASSERT_TRUE(QDir(home.path()).mkpath(u"models/workshop"_s));
    }
    QString target() const { return home.filePath(u"models/workshop"_s); }
    /// The error message; empty if it was unpacked.
    QString unpack(const QString &name, const std::stop_token &stop = {})
    {
        constexpr std::int64_t mostBytes = 10'000'000;
        constexpr int mostFiles = 2000;
        try {
            unpackArchive(
                archives.filePath(name), target(), {mostBytes, mostFiles},
                [this](std::int64_t done) { progress = done; }, stop);
        } catch (const Cancelled &) {
            throw;
        } catch (const Error &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }
    QStringList everything() const
    {
        QStringList found;
        QDirIterator files(home.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            found.append(QDir(target()).relativeFilePath(files.next()));
        }
        found.sort();
        return found;
    }

    QTemporaryDir archives;
    QTemporaryDir home;
    std::int64_t progress = 0;
};

/// Turns "upwards.tar.gz" into a test name.
std::string nameOf(std::string file)
{
    std::replace_if(
        file.begin(), file.end(), [](char each) { return std::isalnum(static_cast<unsigned char>(each)) == 0; }, '_');
    return file;
}

class ModelArchiveKinds : public ModelArchiveTest, public testing::WithParamInterface<const char *> {};
class HostileArchives : public ModelArchiveTest,
                        public testing::WithParamInterface<std::pair<const char *, const char *>> {};

} // namespace

TEST_P(ModelArchiveKinds, areUnpacked)
{
    EXPECT_EQ(unpack(QString::fromLatin1(GetParam())), QString());
    QFile tokens(target() + u"/model-2026/tokens.txt"_s);
    ASSERT_TRUE(tokens.open(QFile::ReadOnly));
    EXPECT_EQ(tokens.readAll(), "<blk> 0\na 1\nb 2\n");
    EXPECT_EQ(QFile(target() + u"/model-2026/model.onnx"_s).size(), 5001);
    EXPECT_FALSE(tokens.permissions() & QFile::ExeOwner);
    EXPECT_GT(progress, 0);
}

INSTANTIATE_TEST_SUITE_P(All, ModelArchiveKinds,
                         testing::Values("good.tar.gz", "good.tar.bz2", "good.tar.xz", "good.zip"),
                         [](const auto &test) { return nameOf(test.param); });

TEST_P(HostileArchives, writeNothingOutsideTheFolder)
{
    const auto [name, complaint] = GetParam();
    EXPECT_TRUE(unpack(QString::fromLatin1(name)).contains(QString::fromLatin1(complaint)))
        << unpack(QString::fromLatin1(name)).toStdString();
    EXPECT_FALSE(QFile::exists(u"/tmp/talmo-outside"_s));
    EXPECT_FALSE(std::filesystem::exists(":talmo-outside")); // QFile would look for a resource.
    for (const auto &found : everything()) {
        const bool isInside = found.startsWith(u"model-2026"_s) || found == u"."_s || found == u"../"_s;
        EXPECT_TRUE(isInside) << found.toStdString();
        EXPECT_FALSE(QFileInfo(target() + u'/' + found).isSymLink()) << found.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileArchives,
    testing::Values(std::pair("upwards.tar.gz", "unsafe path"), std::pair("upwards.zip", "unsafe path"),
                    std::pair("absolute.tar.gz", "unsafe path"), std::pair("deep.tar.gz", "unsafe path"),
                    std::pair("resource.tar.gz", "unsafe path"), std::pair("hidden-resource.tar.gz", "unsafe path"),
                    std::pair("symlink.tar.gz", "neither a file nor a folder"),
                    std::pair("hardlink.tar.gz", "neither a file nor a folder"),
                    std::pair("device.tar.gz", "neither a file nor a folder"),
                    std::pair("pipe.tar.gz", "neither a file nor a folder"), std::pair("twice.tar.gz", "cannot write"),
                    std::pair("through-a-file.tar.gz", "cannot create"),
                    std::pair("many.tar.gz", "more than 2000 files"), std::pair("empty.tar.gz", "is empty"),
                    std::pair("bomb.tar.gz", "unpacks to more"), std::pair("holes.tar.gz", "unpacks to more"),
                    std::pair("truncated.tar.gz", "is damaged"), std::pair("text.tar.gz", "is damaged"),
                    std::pair("missing.tar.gz", "is damaged")),
    [](const auto &test) { return nameOf(test.param.first); });

TEST_F(ModelArchiveTest, stopsWhenCancelled)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(unpack(u"good.tar.gz"_s, stop.get_token()), Cancelled);
}

} // namespace talmo::test
