// talmoctl as users and scripts see it: the program, its output, errors and exit status.

#include "Cleanup/CleanupInstructions.h"
#include "SpokenText.h"
#include "Support/Printing.h"
#include "Support/ProgramRun.h"
#include "Support/TestModelServer.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;

const QString program = QStringLiteral(TALMO_BIN "/talmoctl");

using Result = ProgramRun::Result;

class TalmoctlTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    TalmoctlTest()
    {
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
        environment.insert(u"XDG_DATA_HOME"_s, folder.filePath(u"data"_s));
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        storeSettings({{u"linux.languageModelAddress"_s, u"off"_s}});
    }
    void storeSettings(const QJsonObject &settings) const
    {
        QDir(folder.path()).mkpath(u"talmo"_s);
        QFile file(folder.filePath(u"talmo/settings.json"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QJsonDocument(settings).toJson());
    }
    void storeCatalogue(const QJsonObject &entry) const
    {
        QFile file(folder.filePath(u"talmo/models.json"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QJsonDocument(QJsonObject{{u"models"_s, QJsonArray{entry}}}).toJson());
    }
    Result run(const QString &command, const QStringList &arguments, const QByteArray &input = {}) const
    {
        ProgramRun running(environment, command, arguments);
        running.type(input);
        running.endInput();
        return running.result();
    }
    Result talmoctl(const QStringList &arguments, const QByteArray &input = {}) const
    {
        return run(program, arguments, input);
    }
    Result shell(const QString &script) const
    {
        return run(u"bash"_s, {u"-c"_s, u"talmoctl() { '%1' \"$@\"; }; "_s.arg(program) + script});
    }
    /// Succeeded with exactly this output.
    static void expectOutput(const Result &result, const std::string &output)
    {
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.errors, "");
    }
    static void expectUsageError(const Result &result, const std::string &problem)
    {
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, AllOf(HasSubstr(problem), HasSubstr("--help")));
    }
    static QString contentOf(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    }
    /// The long options listed in a command's help.
    QStringList optionsOf(const QString &command) const
    {
        static const QRegularExpression word(u"--[a-z-]+"_s);
        QStringList found;
        auto matches =
            word.globalMatch(QString::fromStdString(talmoctl(command.split(u' ') + QStringList{u"--help"_s}).output));
        while (matches.hasNext()) {
            found.append(matches.next().captured());
        }
        return found;
    }
};

const QStringList commands{u"format"_s,     u"clean"_s,         u"instructions"_s, u"transcribe"_s,
                           u"insert"_s,     u"last"_s,          u"engines"_s,      u"check-model"_s,
                           u"model list"_s, u"model install"_s, u"model use"_s,    u"model remove"_s,
                           u"setup"_s,      u"pause"_s,         u"resume"_s,       u"restore-clipboard"_s,
                           u"press"_s,      u"release"_s,       u"toggle"_s,       u"cancel"_s,
                           u"status"_s,     u"watch"_s,         u"menu"_s,         u"trace"_s};

} // namespace

TEST_F(TalmoctlTest, formatUsesRulesOnly)
{
    expectOutput(talmoctl({u"format"_s}, "um so buy milk and eggs as a list new paragraph thanks\n"),
                 "Um so buy milk and eggs.\n\nThanks.\n");
    expectOutput(talmoctl({u"format"_s, u"--raw"_s}, "hello"), "Hello.");
    expectOutput(talmoctl({u"format"_s}, "\xc3\xbc"
                                         "ber uns"),
                 "\xc3\x9c"
                 "ber uns.\n");
    expectOutput(talmoctl({u"format"_s}, "new line"), "new line\n");
    expectOutput(talmoctl({u"format"_s}, " \n\t"), "");
    expectOutput(talmoctl({u"format"_s}, ""), "");
}

TEST_F(TalmoctlTest, nonTextInputIsAnError)
{
    const auto result = talmoctl({u"format"_s}, "hello \xff world");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("not valid UTF-8"));
}

TEST_F(TalmoctlTest, cleanUsesSettingsAndModel)
{
    TestModelServer server;
    server.behave(
        {{u"chat"_s, QJsonArray{QJsonObject{{u"when"_s, u"milk"_s}, {u"answer"_s, u"- Buy milk\n- Buy eggs"_s}},
                                QJsonObject{{u"answer"_s, u"Thanks!"_s}}}}});
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}, {u"talmo.textTone"_s, u"polite"_s}});
    const auto result = talmoctl({u"clean"_s}, "um so buy milk and eggs as a list new paragraph thanks");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "- Buy milk\n- Buy eggs\n\nThanks!\n");
    EXPECT_EQ(result.errors,
              "talmoctl: edited by the language model test-model at " + server.address().toStdString() + "\n");
    ASSERT_EQ(server.chats().size(), 2U);
    EXPECT_THAT(server.chats()
                    .front()
                    .value(u"messages"_s)
                    .toArray()
                    .at(0)
                    .toObject()
                    .value(u"content"_s)
                    .toString()
                    .toStdString(),
                HasSubstr("courteous and polite"));
}

TEST_F(TalmoctlTest, cleanReportsMissingModelAndFormatsLocally)
{
    TestModelServer server;
    server.kill();
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
    const auto result = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_EQ(result.errors, "talmoctl: formatted by simple rules, not by a language model: "
                             "no model server is running on this machine\n");
}

TEST_F(TalmoctlTest, cleanSaysWhatModelDidNotEdit)
{
    TestModelServer server;
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
    const auto errorsFor = [&](const QJsonArray &rules, const QByteArray &transcript) {
        server.behave({{u"chat"_s, rules}});
        const auto result = talmoctl({u"clean"_s}, transcript);
        EXPECT_EQ(result.status, 0);
        return result.errors;
    };
    const std::string rules = "talmoctl: formatted by simple rules, not by a language model: ";
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"\"\""_s}}}, "hello"), rules + "The model's answer was empty.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"status"_s, 500}}}, "hello"), rules + "The model server returned status 500.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"Half a"_s}, {u"finish_reason"_s, u"length"_s}}}, "hello"),
              rules + "The model's answer was cut off.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"when"_s, u"milk"_s}, {u"answer"_s, u"Milk."_s}},
                         QJsonObject{{u"fault"_s, u"close"_s}}},
                        "milk new line eggs"),
              "talmoctl: the language model edited 1 of 2 paragraphs; the others were formatted by simple rules: "
              "The model server closed the connection before its response was complete.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"Hi."_s}}}, "new line"), rules + "there is no sentence to edit\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"Hi."_s}}}, " \n"), "");
}

TEST_F(TalmoctlTest, cleanRefusesRemoteAddress)
{
    storeSettings({{u"linux.languageModelAddress"_s, u"http://192.168.1.2:8080"_s}});
    const auto result = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_THAT(result.errors, AllOf(HasSubstr("192.168.1.2"), HasSubstr("refused")));
}

TEST_F(TalmoctlTest, cleanDoesNotContactServerWhenDisabled)
{
    TestModelServer server;
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}, {u"talmo.aiCleanupEnabled"_s, false}});
    const auto result = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_EQ(result.errors,
              "talmoctl: formatted by simple rules, not by a language model: AI cleanup is off in the settings\n");
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(TalmoctlTest, instructionsAreExact)
{
    storeSettings({{u"talmo.textTone"_s, u"friendly"_s},
                   {u"talmo.conciseTextEnabled"_s, true},
                   {u"talmo.dictionaryWords"_s, QJsonArray{u"Caf\u00E9"_s}}});
    const auto expected = [](const QStringList &words, bool bullets, bool concise, TextTone tone) {
        return buildInstructions(words, bullets, concise, tone).toStdString();
    };
    const QStringList words{u"Caf\u00E9"_s};
    expectOutput(talmoctl({u"instructions"_s}), expected(words, false, true, TextTone::Friendly) + "\n");
    expectOutput(talmoctl({u"instructions"_s, u"--raw"_s}), expected(words, false, true, TextTone::Friendly));
    expectOutput(
        talmoctl({u"instructions"_s, u"--raw"_s, u"--tone"_s, u"standard"_s, u"--no-concise"_s, u"--no-words"_s}),
        expected({}, false, false, TextTone::Standard));
    expectOutput(talmoctl({u"instructions"_s, u"--raw"_s, u"--tone=polite"_s, u"--concise"_s, u"--bullets"_s,
                           u"--word"_s, u"a, b"_s, u"--word"_s, u"c"_s}),
                 expected({u"a, b"_s, u"c"_s}, true, true, TextTone::Polite));
}

TEST_F(TalmoctlTest, usageErrorsNameProblemAndHelp)
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

TEST_F(TalmoctlTest, helpAndVersion)
{
    const auto help = talmoctl({u"--help"_s});
    EXPECT_EQ(help.status, 0);
    for (const auto &command : commands) {
        EXPECT_THAT(help.output, HasSubstr("\n  " + command.toStdString() + " "));
        const auto own = talmoctl(command.split(u' ') + QStringList{u"--help"_s});
        EXPECT_EQ(own.status, 0);
        EXPECT_THAT(own.output, HasSubstr("Usage: talmoctl " + command.toStdString() + " [options]"));
    }
    EXPECT_THAT(talmoctl({u"--version"_s}).output, testing::MatchesRegex("talmoctl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(TalmoctlTest, applicationRefusesUnknownOptions)
{
    const auto result = run(QStringLiteral(TALMO_BIN "/talmo"), {u"--dictate"_s});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, AllOf(HasSubstr("--dictate"), HasSubstr("--help")));
}

TEST_F(TalmoctlTest, worksInPipes)
{
    expectOutput(shell(u"echo 'one new line two' | talmoctl format | tail -n 1"_s), "Two.\n");
    EXPECT_EQ(shell(u"set -o pipefail; talmoctl instructions | head -c 1 >/dev/null; echo"_s).errors, "");
    const auto full = shell(u"talmoctl instructions > /dev/full"_s);
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.errors, HasSubstr("cannot write to stdout"));
    const auto closed = shell(u"talmoctl format <&-"_s);
    EXPECT_EQ(closed.status, 1);
    EXPECT_THAT(closed.errors, HasSubstr("cannot read stdin"));
}

TEST_F(TalmoctlTest, damagedSettingsDoNotFail)
{
    QFile file(folder.filePath(u"talmo/settings.json"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("{\"linux.languageModelAddress\": \"of");
    file.close();
    const auto result = talmoctl({u"format"_s}, "hello");
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_THAT(result.errors, HasSubstr("damaged"));
}

TEST_F(TalmoctlTest, transcribesFile)
{
    const QString wav = testbed::speak(u"hello world"_s, folder.path());
    expectOutput(talmoctl({u"transcribe"_s, wav}), "hello world\n");
    const auto live = talmoctl({u"transcribe"_s, u"--live"_s, wav});
    EXPECT_EQ(live.status, 0) << live.errors;
    const auto lines = QString::fromStdString(live.output).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_GT(lines.size(), 1) << live.output;
    EXPECT_EQ(lines.last(), u"hello world"_s);
}

TEST_F(TalmoctlTest, untranscribableFileIsAnError)
{
    const QString wav = testbed::speak(u"hello world"_s, folder.path());
    EXPECT_THAT(talmoctl({u"transcribe"_s, folder.filePath(u"none.wav"_s)}).errors, HasSubstr("none.wav"));
    QFile text(folder.filePath(u"text.wav"_s));
    ASSERT_TRUE(text.open(QFile::WriteOnly));
    text.write("no sound at all");
    text.close();
    EXPECT_EQ(talmoctl({u"transcribe"_s, text.fileName()}).status, 1);
    const auto language = talmoctl({u"transcribe"_s, u"--language"_s, u"tlh"_s, wav});
    EXPECT_EQ(language.status, 1);
    EXPECT_THAT(language.errors, HasSubstr("isn't supported for on-device transcription"));
    const QString silence = testbed::speak(u"."_s, folder.path());
    EXPECT_THAT(talmoctl({u"transcribe"_s, silence}).errors, HasSubstr("No speech detected."));
}

TEST_F(TalmoctlTest, insertReportsMissingDisplay)
{
    environment.remove(u"DISPLAY"_s);
    const auto result = talmoctl({u"insert"_s}, "hello");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("No X display could be opened"));
}

TEST_F(TalmoctlTest, manualAndCompletionsListEveryOption)
{
    const QString packaging = QStringLiteral(TALMO_SOURCE "/packaging/");
    const QString manual = contentOf(packaging + u"man/talmoctl.1"_s);
    const QString zsh = contentOf(packaging + u"completions/_talmoctl"_s);
    const QString fish = contentOf(packaging + u"completions/talmoctl.fish"_s);
    for (const auto &command : commands) {
        EXPECT_TRUE(manual.contains(u".Cm "_s + command)) << command.toStdString();
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

TEST_F(TalmoctlTest, talmoAnswersHelpAndVersionWithoutDisplay)
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

TEST_F(TalmoctlTest, talmosManualAndCompletionsListItsOptions)
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

TEST_F(TalmoctlTest, incompleteModelCommandIsUnknown)
{
    expectUsageError(talmoctl({u"model"_s}), "unknown command");
    expectUsageError(talmoctl({u"model"_s, u"paint"_s}), "unknown command “model paint”");
}

TEST_F(TalmoctlTest, modelUseReportsFullDisk)
{
    // A file size limit fails like a full disk. The ignored signal stays ignored in the child process.
    const auto full = shell(u"trap '' XFSZ; ulimit -f 0; talmoctl model use embedded"_s);
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.output, "");
    EXPECT_THAT(full.errors, HasSubstr("could not be saved"));
    expectOutput(talmoctl({u"model"_s, u"use"_s, u"embedded"_s}), "Using embedded from the next recording on.\n");
}

TEST_F(TalmoctlTest, modelRemoveRefusesLinksAndPaths)
{
    const QString models = folder.filePath(u"data/talmo/models"_s);
    QDir().mkpath(models);
    QDir().mkpath(folder.filePath(u"outside/precious"_s));
    ASSERT_TRUE(QFile::link(folder.filePath(u"outside"_s), models + u"/linked"_s));
    for (const auto &name : {u"linked"_s, u"../../../outside"_s, folder.filePath(u"outside"_s)}) {
        EXPECT_EQ(talmoctl({u"model"_s, u"remove"_s, name}).status, 1) << name.toStdString();
    }
    EXPECT_TRUE(QFile::exists(folder.filePath(u"outside/precious"_s)));
}

TEST_F(TalmoctlTest, cleanSendsNothingWithDamagedSettings)
{
    const TestModelServer server;
    QFile file(folder.filePath(u"talmo/settings.json"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("{\"talmo.aiCleanupEnabled\": false, \"linux.lang");
    file.close();
    EXPECT_EQ(talmoctl({u"clean"_s}, "hello").output, "Hello.\n");
    const auto next = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(next.output, "Hello.\n");
    EXPECT_THAT(next.errors, HasSubstr("AI cleanup is off in the settings")) << "nor does the next call probe a server";
}

TEST_F(TalmoctlTest, manualsAreWellFormed)
{
    for (const auto &page : {u"talmo.1"_s, u"talmoctl.1"_s}) {
        expectOutput(run(u"mandoc"_s, {u"-T"_s, u"lint"_s, u"-W"_s, u"warning"_s,
                                       QStringLiteral(TALMO_SOURCE "/packaging/man/") + page}),
                     "");
    }
}

} // namespace talmo::test
