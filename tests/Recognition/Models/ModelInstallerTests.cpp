#include "Recognition/Models/ModelInstaller.h"

#include "Base/Error.h"
#include "Recognition/Models/ModelInstallerFixture.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ModelInstallerTest : public ModelInstallerFixture {};

class HostileModels : public ModelInstallerFixture, public testing::WithParamInterface<const char *> {};

} // namespace

TEST_F(ModelInstallerTest, downloadsVerifiesUnpacksAndTestsBeforePublishing)
{
    tryModel = [this](const QString &folder) {
        EXPECT_TRUE(QFile::exists(folder + u"/model.onnx"_s));
        EXPECT_TRUE(QFile::exists(folder + u"/talmo-model.json"_s));
        EXPECT_FALSE(installer.store().isInstalled(u"toy"_s));
        return std::optional<double>();
    };
    EXPECT_EQ(install(measured(u"/good.tar.gz"_s)), QString());
    expectInstalled();
    std::vector<ModelProgress::Phase> phases;
    for (const auto &each : progress) {
        if (phases.empty() || phases.back() != each.phase) {
            phases.push_back(each.phase);
        }
    }
    using enum ModelProgress::Phase;
    EXPECT_THAT(phases, ElementsAre(Downloading, Checking, Unpacking, Trying));
    QFile notes(home.filePath(u"models/toy/talmo-model.json"_s));
    ASSERT_TRUE(notes.open(QFile::ReadOnly));
    const auto object = QJsonDocument::fromJson(notes.readAll()).object();
    EXPECT_EQ(object.value(u"licence"_s).toString(), u"public domain"_s);
    EXPECT_EQ(object.value(u"source"_s).toString(), server->address(u"/good.tar.gz"_s));
}

TEST_F(ModelInstallerTest, acceptsArchiveWithoutTopLevelFolder)
{
    EXPECT_EQ(install(entry(u"/flat.tar.gz"_s)), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, replacesInstalledModel)
{
    EXPECT_EQ(install(entry(u"/flat.tar.gz"_s)), QString());
    QFile(home.filePath(u"models/toy/tokens.txt"_s)).remove();
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    expectInstalled();
    EXPECT_TRUE(QFile::exists(home.filePath(u"models/toy/tokens.txt"_s)));
}

TEST_F(ModelInstallerTest, rejectsWrongChecksum)
{
    auto wanted = measured(u"/good.zip"_s);
    wanted.sha256[0] = wanted.sha256[0] == '0' ? '1' : '0';
    const RecordingLog log;
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("talmoctl model install toy --accept-renewed"));
    EXPECT_TRUE(log.lines().back().contains(u"Checksum mismatch"_s));
    expectNothing();
}

TEST_F(ModelInstallerTest, renewedFileIsInstalledOnceAccepted)
{
    auto wanted = measured(u"/good.zip"_s);
    wanted.size = *wanted.size + 1;
    wanted.sha256[0] = wanted.sha256[0] == '0' ? '1' : '0';
    terms.acceptsRenewed = true;
    EXPECT_EQ(install(wanted), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, slowModelIsInstalledOnlyIfAnySpeedWillDo)
{
    tryModel = [](const QString &) { return std::optional(0.6); };
    terms.largestShareOfSpeech = 0.5;
    EXPECT_THAT(install(measured(u"/good.zip"_s)).toStdString(), HasSubstr("0.6 s for each second of speech"));
    expectNothing();
    terms.largestShareOfSpeech.reset();
    EXPECT_EQ(install(measured(u"/good.zip"_s)), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, installsSingleFileUnderItsOwnName)
{
    QFile model(files.filePath(u"voice.onnx"_s));
    ASSERT_TRUE(model.open(QFile::WriteOnly));
    model.write("\x08 not an archive");
    model.close();
    EXPECT_EQ(install(measured(u"/voice.onnx"_s)), QString());
    EXPECT_EQ(QFile(home.filePath(u"models/toy/voice.onnx"_s)).size(), model.size());
}

TEST_F(ModelInstallerTest, rejectsModelThatEngineCannotUse)
{
    tryModel = [](const QString &) -> std::optional<double> { throw Error(u"it will not do"_s); };
    EXPECT_EQ(install(entry(u"/good.zip"_s)), u"it will not do"_s);
    EXPECT_FALSE(installer.store().isInstalled(u"toy"_s));
}

TEST_P(HostileModels, areRejectedAndLeaveNothingBehind)
{
    EXPECT_NE(install(entry(u'/' + QString::fromLatin1(GetParam()))), QString());
    expectNothing();
    EXPECT_EQ(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"models"_s});
    EXPECT_FALSE(QFile::exists(u"/tmp/talmo-outside"_s));
}

INSTANTIATE_TEST_SUITE_P(All, HostileModels,
                         testing::Values("upwards.tar.gz", "absolute.tar.gz", "symlink.tar.gz", "bomb.tar.gz",
                                         "holes.tar.gz", "truncated.tar.gz", "text.tar.gz"),
                         [](const auto &test) {
                             return QString::fromLatin1(test.param).section(u'.', 0, 0).toStdString();
                         });

TEST(ModelProgress, describesProgress)
{
    using enum ModelProgress::Phase;
    EXPECT_EQ((ModelProgress{Downloading, 12'300'000, 120'000'000, {}}).description(), u"Downloading: 12 of 120 MB"_s);
    EXPECT_EQ((ModelProgress{Downloading, 60'000'000, 120'000'000, 3'000'000}).description(),
              u"Downloading: 60 of 120 MB, 3.0 MB/s, 20 s left"_s);
    EXPECT_EQ((ModelProgress{Downloading, 60'000'000, 120'000'000, 200'000}).description(),
              u"Downloading: 60 of 120 MB, 0.2 MB/s, 5 min left"_s);
    EXPECT_EQ((ModelProgress{Downloading, 12'300'000, std::nullopt, {}}).description(), u"Downloading: 12 MB"_s);
    EXPECT_EQ((ModelProgress{Unpacking, 1, 2, {}}).share(), 0.5);
    EXPECT_EQ((ModelProgress{Trying, 0, std::nullopt, {}}).share(), std::nullopt);
    EXPECT_EQ((ModelProgress{Downloading, 0, 0, {}}).share(), std::nullopt);
}

} // namespace talmo::test
