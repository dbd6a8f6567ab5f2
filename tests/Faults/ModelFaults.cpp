#include "Faults/FaultFixture.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace talmo::test {

namespace {

/// Shows Talmo a damaged copy of the embedded model in its own mount namespace.
class ModelFault : public FaultTest {
protected:
    /// `damage`: shell commands that damage the copy in "$model".
    void errorAfter(const QString &damage)
    {
        if (std::system("unshare --mount true 2>/dev/null") != 0) { // NOLINT(cert-env33-c,concurrency-mt-unsafe)
            GTEST_SKIP() << "mount namespaces are not permitted here";
        }
        environment.insert(u"TALMO_DAMAGE"_s, damage);
        startTalmoThrough(u"unshare"_s,
                          {u"--mount"_s, u"sh"_s, u"-ec"_s,
                           u"installed=/usr/share/pocketsphinx/model/en-us; model=$0; cp -r $installed $model;"
                           "eval \"$TALMO_DAMAGE\"; mount --bind $model $installed; exec " TALMO_BIN "/talmo"_s,
                           desktop.folder() + u"/model"_s});
        openQtWindow();
        for (int round = 0; round < 2; ++round) { // A second attempt fails in the same way.
            expectLinesFromHere();
            keyboard.press(key);
            EXPECT_TRUE(talmo->waitForLine(u"error: "_s, timeout, seenLines()));
            keyboard.release(key);
            testbed::sleepFor(std::chrono::milliseconds(350)); // Longer than the double-tap window.
        }
        EXPECT_THAT(talmo->output().toStdString(), testing::Not(testing::HasSubstr("inserting")));
        EXPECT_EQ(quitTalmo(), 0);
        startTalmo();
        nextDictationWorks();
    }
};

} // namespace

static const FaultRegistration missingRow("Model", "The embedded model is missing",
                                          "An error at the press; Talmo works again once it is installed");
TEST_F(ModelFault, missing)
{
    errorAfter(u"rm -r $model/*"_s);
}

static const FaultRegistration halfRow("Model", "Half of the embedded model is missing", "As above");
TEST_F(ModelFault, halfThere)
{
    errorAfter(u"rm $model/en-us/mdef $model/en-us.lm.bin"_s);
}

static const FaultRegistration truncatedRow("Model", "The embedded model is cut short", "As above");
TEST_F(ModelFault, truncated)
{
    errorAfter(u"truncate -s 100000 $model/en-us/mdef $model/en-us.lm.bin"_s);
}

} // namespace talmo::test
