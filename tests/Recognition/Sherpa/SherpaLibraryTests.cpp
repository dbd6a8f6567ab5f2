#include "Recognition/Sherpa/SherpaLibrary.h"

#include "Recognition/Sherpa/SherpaFiles.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

TEST(SherpaLibrary, logsSearchedPathsAndShowsUsersARemedy)
{
    const RecordingLog log;
    const QString missing = errorOf([] { SherpaLibrary::open(u"/nonexistent/lib.so"_s); });
    EXPECT_FALSE(missing.contains(u'/')) << missing.toStdString();
    EXPECT_TRUE(missing.contains(u"talmoctl setup"_s)) << missing.toStdString();
    EXPECT_THAT(log.lines(), testing::Contains(testing::ResultOf(
                                 [](const QString &line) { return line.contains(u"/nonexistent/lib.so"_s); }, true)));
}

TEST(SherpaLibrary, rejectsFileThatIsNotALibrary)
{
    const QTemporaryDir folder;
    writeFile(folder.filePath(u"lib.so"_s), "this is no library");
    EXPECT_TRUE(errorOf([&] { SherpaLibrary::open(folder.filePath(u"lib.so"_s)); }).contains(u"cannot be loaded"_s));
}

TEST(SherpaLibrary, rejectsOldVersionBeforeUsingIt)
{
    EXPECT_EQ(errorOf([] { SherpaLibrary::open(QStringLiteral(TALMO_OLD_ENGINE)); }),
              u"The neural recogniser's library is too old. Install the recogniser again to get a newer one. (version "
              "1.12.12; 1.12.13 or later is needed)"_s);
}

TEST(SherpaLibrary, rejectsVersionWithUnknownStructures)
{
    EXPECT_EQ(
        errorOf([] { SherpaLibrary::open(QStringLiteral(TALMO_UNKNOWN_ENGINE)); }),
        u"The neural recogniser's library is newer than this version of Talmo knows. Update Talmo, or install the "
        "recogniser again. (version 2.0.1; one before 2.0.0 is needed)"_s);
}

TEST(SherpaLibrary, refusesModelThatNeedsNewerLibrary)
{
    const auto library = SherpaLibrary::open(QStringLiteral(TALMO_STAND_IN_ENGINE));
    EXPECT_EQ(errorOf([&] { library->requireVersion({}); }), QString());
    EXPECT_EQ(errorOf([&] { library->requireVersion(u"1.13.8"_s); }), QString());
    EXPECT_TRUE(errorOf([&] { library->requireVersion(u"1.13.10"_s); }).contains(u"newer library"_s));
}

TEST(SherpaLibrary, prefersNewestDownloadedLibraryAndPassesOverUnusableOnes)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    const QString name = u"/libsherpa-onnx-c-api.so"_s;
    const auto put = [&](const char *library, const QString &folder) {
        QDir(data.path()).mkpath(u"talmo/engines/"_s + folder);
        const QString place = data.filePath(u"talmo/engines/"_s + folder) + name;
        EXPECT_TRUE(QFile::copy(QString::fromUtf8(library), place));
        return place;
    };
    put(TALMO_OLD_ENGINE, u"."_s);
    EXPECT_TRUE(errorOf([] { SherpaLibrary::open({}); }).contains(u"1.12.12"_s));
    const QString older = put(TALMO_STAND_IN_ENGINE, u"sherpa-onnx-1.9.0/lib"_s);
    EXPECT_EQ(SherpaLibrary::open({})->path(), older);
    const QString newer = put(TALMO_STAND_IN_ENGINE, u"sherpa-onnx-1.13.8"_s);
    EXPECT_EQ(SherpaLibrary::open({})->path(), newer);
    put(TALMO_UNKNOWN_ENGINE, u"sherpa-onnx-2.0.1/lib"_s);
    EXPECT_EQ(SherpaLibrary::open({})->path(), newer);
    EXPECT_TRUE(SherpaLibrary::isInstalled({}));
    qunsetenv("XDG_DATA_HOME");
}

TEST(SherpaLibrary, rejectsLibraryWithMissingSymbols)
{
    EXPECT_TRUE(errorOf([] { SherpaLibrary::open(QStringLiteral(TALMO_LACKING_ENGINE)); }).contains(u"lacks"_s));
}

} // namespace talmo::test
