// Counts the instructions of the text path, so that it stays linear, whatever else the machine does.

#include "Support/Printing.h"
#include "Support/ProgramRun.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

/// Of a run of the program with a text of so many characters; 0 if they could not be counted.
double instructionsFor(int length)
{
    ProgramRun run(QProcessEnvironment::systemEnvironment(), u"valgrind"_s,
                   {u"--tool=callgrind"_s, u"--callgrind-out-file=/dev/null"_s, QStringLiteral(TALMO_TEXT_PATH),
                    QString::number(length)});
    const auto result = run.result();
    static const QRegularExpression collected(u"Collected : (\\d+)"_s);
    return collected.match(QString::fromStdString(result.errors)).captured(1).toDouble();
}

} // namespace

TEST(TextInstructions, countStaysLowAndGrowsWithTheTextAlone)
{
    constexpr int length = 20'000;
    const double start = instructionsFor(0);
    const double once = instructionsFor(length) - start;
    const double tenTimes = instructionsFor(10 * length) - start;
    ASSERT_GT(start, 0) << "valgrind did not count";
    ASSERT_GT(once, 0);
    EXPECT_NEAR(tenTimes / once, 10, 0.2) << "within two per cent";
    RecordProperty("instructionsPerCharacter", static_cast<int>(once / length));
    if (TALMO_IS_OPTIMISED) {
        // Counted with the compiler and the Qt of Debian 12. Whoever needs fewer lowers it.
        constexpr double perCharacter = 103.5;
        EXPECT_LE(once / length, perCharacter * 1.02);
    }
}

} // namespace talmo::test
