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
              u"The neural recogniser's library is version 1.12.34; this kind of model needs 1.12.35 or later, before "
              "1.14.0."_s);
    EXPECT_NE(complaintAbout([] { return "1.14.0"; }), QString());
    EXPECT_NE(complaintAbout([] { return "2.0.1"; }), QString());
}

} // namespace talmo::test
