#include "Recognition/Sherpa/SherpaFunctions.h"

#include "Recognition/Sherpa/SherpaFiles.h"
#include "Support/Printing.h"

namespace talmo::test {

namespace {

QString complaintAbout(const char *(*version)())
{
    SherpaFunctions functions;
    functions.version = version;
    return errorOf([&functions] { functions.requireOffline(); });
}

} // namespace

TEST(SherpaFunctions, offlineStructuresAreThoseOfKnownVersions)
{
    EXPECT_EQ(complaintAbout([] { return "1.12.35"; }), QString());
    EXPECT_EQ(complaintAbout([] { return "1.13.8"; }), QString());
    EXPECT_EQ(complaintAbout([] { return "1.12.34"; }),
              u"The neural recogniser's library is of a version that models of this kind do not work with. Install the "
              "model again. (version 1.12.34; 1.12.35 or later, before 1.14.0 is needed)"_s);
    EXPECT_NE(complaintAbout([] { return "1.14.0"; }), QString());
    EXPECT_NE(complaintAbout([] { return "2.0.1"; }), QString());
}

} // namespace talmo::test
