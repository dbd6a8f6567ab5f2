// What the programs say about themselves: help, manuals and completions.

#include "Support/Printing.h"
#include "talmoctl/TalmoctlFixture.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;

class ManualTest : public TalmoctlFixture {
protected:
    /// Those that the help lists, such as "format" and "model list".
    QStringList commands() const
    {
        static const QRegularExpression line(u"^  ([a-z][a-z-]*(?: [a-z-]+)?)(?: [A-Z]+)? +[A-Z]"_s,
                                             QRegularExpression::MultilineOption);
        QStringList found;
        auto matches = line.globalMatch(QString::fromStdString(talmoctl({u"--help"_s}).output));
        while (matches.hasNext()) {
            found.append(matches.next().captured(1));
        }
        EXPECT_GT(found.size(), 20);
        return found;
    }
};

} // namespace

TEST_F(ManualTest, usageErrorsNameProblemAndHelp)
{
    expectUsageError(talmoctl({}), "no command given");
    expectUsageError(talmoctl({u"frobnicate"_s}), "frobnicate");
    expectUsageError(talmoctl({u"format"_s, u"--loud"_s}), "loud");
    expectUsageError(talmoctl({u"format"_s, u"file"_s}), "takes no argument");
    expectUsageError(talmoctl({u"transcribe"_s}), "takes one argument");
    expectUsageError(talmoctl({u"instructions"_s, u"--tone"_s, u"rude"_s}), "rude");
    expectUsageError(talmoctl({u"instructions"_s, u"--tone"_s}), "tone");
    expectUsageError(talmoctl({u"instructions"_s, u"--word"_s, u"x"_s, u"--no-words"_s}), "cannot be combined");
    expectUsageError(talmoctl({u"instructions"_s, u"--concise"_s, u"--no-concise"_s}), "cannot be combined");
    expectUsageError(talmoctl({u"insert"_s, u"x"_s}), "takes no argument");
}

TEST_F(ManualTest, printsHelpAndVersion)
{
    EXPECT_EQ(talmoctl({u"--help"_s}).status, 0);
    for (const auto &command : commands()) {
        const auto own = talmoctl(command.split(u' ') + QStringList{u"--help"_s});
        EXPECT_EQ(own.status, 0);
        EXPECT_THAT(own.output, HasSubstr("Usage: talmoctl " + command.toStdString() + " [options]"));
    }
    EXPECT_THAT(talmoctl({u"--version"_s}).output, testing::MatchesRegex("talmoctl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(ManualTest, applicationRefusesUnknownOptions)
{
    const auto result = run(QStringLiteral(TALMO_BIN "/talmo"), {u"--dictate"_s});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, AllOf(HasSubstr("--dictate"), HasSubstr("--help")));
}

TEST_F(ManualTest, manualAndCompletionsListEveryCommandAndOption)
{
    const QString packaging = QStringLiteral(TALMO_SOURCE "/packaging/");
    const QString manual = contentOf(packaging + u"man/talmoctl.1"_s);
    const QString zsh = contentOf(packaging + u"completions/_talmoctl"_s);
    const QString fish = contentOf(packaging + u"completions/talmoctl.fish"_s);
    const QString documentation = contentOf(QStringLiteral(TALMO_SOURCE "/docs/CommandLine.md"));
    const QString firstWords = QString::fromStdString(
        shell(u". '%1'; COMP_WORDS=(talmoctl ''); COMP_CWORD=1; _talmoctl; echo \" ${COMPREPLY[@]} \""_s.arg(
                  packaging + u"completions/talmoctl.bash"_s))
            .output);
    for (const auto &command : commands()) {
        EXPECT_TRUE(firstWords.contains(u' ' + command.section(u' ', 0, 0) + u' ')) << command.toStdString();
        EXPECT_TRUE(documentation.contains(QRegularExpression(u"`(talmoctl )?%1[ `]"_s.arg(command))))
            << command.toStdString();
        EXPECT_TRUE(manual.contains(QRegularExpression(u"\\n\\.It Cm ([a-z]+ , )?%1\\b"_s.arg(command))))
            << command.toStdString();
        EXPECT_TRUE(zsh.contains(u'\'' + command.section(u' ', -1) + u':')) << command.toStdString();
        EXPECT_TRUE(fish.contains(u" -a "_s + command.section(u' ', -1) + u" -d "_s)) << command.toStdString();
        const auto options = optionsOf(command);
        EXPECT_TRUE(options.contains(u"--help"_s));
        const auto completed =
            shell(u". '%1'; COMP_WORDS=(talmoctl %2 -); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _talmoctl; "
                  u"printf '%s\\n' \"${COMPREPLY[@]}\""_s.arg(packaging + u"completions/talmoctl.bash"_s, command));
        EXPECT_THAT(QString::fromStdString(completed.output).split(u'\n', Qt::SkipEmptyParts),
                    testing::UnorderedElementsAreArray(options));
        for (const auto &option : options) {
            EXPECT_TRUE(manual.contains(u"-"_s + option.mid(2))) << option.toStdString();
            EXPECT_TRUE(zsh.contains(option)) << option.toStdString();
            EXPECT_TRUE(fish.contains(u" -l "_s + option.mid(2) + u' ')) << option.toStdString();
        }
    }
    expectOutput(shell(u". '%1'; COMP_WORDS=(talmoctl in); COMP_CWORD=1; _talmoctl; echo \"${COMPREPLY[@]}\""_s.arg(
                     packaging + u"completions/talmoctl.bash"_s)),
                 "instructions insert\n");
    expectOutput(
        shell(
            u". '%1'; COMP_WORDS=(talmoctl instructions --tone p); COMP_CWORD=3; _talmoctl; echo \"${COMPREPLY[@]}\""_s
                .arg(packaging + u"completions/talmoctl.bash"_s)),
        "professional polite\n");
}

TEST_F(ManualTest, talmoAnswersHelpAndVersionWithoutDisplay)
{
    environment.remove(u"DISPLAY"_s);
    const QString talmo = QStringLiteral(TALMO_BIN "/talmo");
    const auto help = run(talmo, {u"--help"_s});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_THAT(help.output, AllOf(HasSubstr("Usage: talmo\n"), HasSubstr("--version")));
    expectOutput(run(talmo, {u"--version"_s}), talmoctl({u"--version"_s}).output.replace(0, 8, "talmo"));
    for (const QStringList &unknown : {QStringList{u"--paint"_s}, QStringList{u"--help"_s, u"--paint"_s}}) {
        const auto refused = run(talmo, unknown);
        expectUsageError(refused, "“--paint” is not an option");
    }
}

TEST_F(ManualTest, talmosManualAndCompletionsListItsOptions)
{
    const QString packaging = QStringLiteral(TALMO_SOURCE "/packaging/");
    for (const auto &option : {u"help"_s, u"version"_s}) {
        EXPECT_TRUE(contentOf(packaging + u"man/talmo.1"_s).contains(u"Fl -"_s + option));
        for (const auto &completion : {u"_talmo"_s, u"talmo.bash"_s}) {
            EXPECT_TRUE(contentOf(packaging + u"completions/"_s + completion).contains(u"--"_s + option));
        }
        EXPECT_TRUE(contentOf(packaging + u"completions/talmo.fish"_s).contains(u"-l "_s + option));
    }
}

TEST_F(ManualTest, manualsAreWellFormed)
{
    for (const auto &page : {u"talmo.1"_s, u"talmoctl.1"_s}) {
        expectOutput(run(u"mandoc"_s, {u"-T"_s, u"lint"_s, u"-W"_s, u"warning"_s,
                                       QStringLiteral(TALMO_SOURCE "/packaging/man/") + page}),
                     "");
    }
}

} // namespace talmo::test
