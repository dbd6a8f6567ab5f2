#include "Recognition/Sherpa/SherpaLibrary.h"

#include "Recognition/Sherpa/SherpaFiles.h"
#include "Support/Printing.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

TEST(SherpaLibrary, listsSearchedPathsWhenLibraryIsMissing)
{
    const QString missing = errorOf([] { SherpaLibrary::open(u"/nonexistent/lib.so"_s); });
    EXPECT_TRUE(missing.contains(u"/nonexistent/lib.so"_s)) << missing.toStdString();
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
              u"The neural recogniser's library is version 1.12.12; Talmo needs 1.12.13 or later."_s);
}

TEST(SherpaLibrary, rejectsLibraryWithMissingSymbols)
{
    EXPECT_TRUE(errorOf([] { SherpaLibrary::open(QStringLiteral(TALMO_LACKING_ENGINE)); }).contains(u"lacks"_s));
}

} // namespace talmo::test
