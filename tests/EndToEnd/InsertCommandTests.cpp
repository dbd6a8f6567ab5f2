// talmoctl insert, with and without a running Talmo.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>

#include <csignal>

namespace talmo::test {

namespace {

class InsertCommandEndToEndTest : public TalmoFixture {
protected:
    /// Runs talmoctl insert; returns its exit status.
    int insert(const QByteArray &text, const QStringList &options = {})
    {
        return run(QStringList{u"insert"_s} + options, text);
    }
    int run(const QStringList &arguments, const QByteArray &text = {})
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(TALMO_BIN "/talmoctl"), arguments);
        process.write(text);
        process.closeWriteChannel();
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
        output = process.readAll();
        return process.exitCode();
    }
    QByteArray output;

    QString socketPath() const
    {
        return environment.value(u"XDG_RUNTIME_DIR"_s) + u"/talmo"_s + environment.value(u"DISPLAY"_s);
    }

    /// The ids of the processes running our talmoctl insert. Only those of this test: another one may run meanwhile.
    QStringList talmoctlProcesses() const
    {
        const QByteArray own = "XDG_RUNTIME_DIR=" + environment.value(u"XDG_RUNTIME_DIR"_s).toUtf8();
        QStringList found;
        for (const auto &entry : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
            QFile variables(u"/proc/%1/environ"_s.arg(entry));
            QFile arguments(u"/proc/%1/cmdline"_s.arg(entry)); // A running Talmo checks models with talmoctl.
            if (QFileInfo(u"/proc/%1/exe"_s.arg(entry)).symLinkTarget() == QStringLiteral(TALMO_BIN "/talmoctl") &&
                variables.open(QFile::ReadOnly) && variables.readAll().split('\0').contains(own) &&
                arguments.open(QFile::ReadOnly) && arguments.readAll().split('\0').contains("insert")) {
                found.append(entry);
            }
        }
        return found;
    }
    bool isAlone()
    {
        return testbed::pollUntil([this] { return talmoctlProcesses().isEmpty(); }, timeout);
    }
};

} // namespace

TEST_F(InsertCommandEndToEndTest, insertsThroughRunningTalmo)
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("typed by a script\n"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script"_s));
    EXPECT_EQ(talmoctlProcesses(), QStringList()) << "only Talmo keeps running";
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_FALSE(QFileInfo::exists(socketPath()));
}

TEST_F(InsertCommandEndToEndTest, concurrentCommandsTakeTurns)
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    std::vector<std::unique_ptr<testbed::ChildProcess>> callers;
    constexpr int count = 8;
    for (int number = 0; number < count; ++number) {
        callers.push_back(std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmoctl"),
                                                                  QStringList{u"insert"_s}, environment));
        callers.back()->writeLine(u"(%1)"_s.arg(number));
        callers.back()->closeInput();
    }
    const auto isWhole = [this] {
        const auto &lines = window->lines();
        return !lines.empty() && lines.back().text.count(u'(') == count && lines.back().text.count(u')') == count;
    };
    EXPECT_TRUE(testbed::waitUntil(isWhole, timeout)) << window->output().toStdString();
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
}

TEST_F(InsertCommandEndToEndTest, withoutTalmoStaysUntilClipboardOwnerChanges)
{
    openQtWindow();
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("typed by a script\n"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script"_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
    EXPECT_EQ(talmoctlProcesses().size(), 1) << "the restored content needs an owner";
    copy(u"copied later"_s);
    EXPECT_TRUE(isAlone());
}

TEST_F(InsertCommandEndToEndTest, withoutTalmoManyInARowKeepTheClipboard)
{
    openQtWindow();
    copy(u"clipboard before"_s);
    QString all;
    for (int number = 0; number < 10; ++number) {
        const QString text = u"(%1)"_s.arg(number);
        EXPECT_EQ(insert(text.toUtf8()), 0) << output.toStdString();
        all += text;
    }
    EXPECT_TRUE(windowShows(all));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
}

TEST_F(InsertCommandEndToEndTest, withoutTalmoUnreadTextKeepsClipboardForNextCommand)
{
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("nobody reads this"), 1) << "there is no window";
    EXPECT_EQ(clipboard(), "nobody reads this");
    openQtWindow();
    EXPECT_EQ(insert("typed by a script"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script"_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return talmoctlProcesses().size() == 1; }, timeout));
}

TEST_F(InsertCommandEndToEndTest, withoutTalmoRestoreClipboardUndoesUnreadText)
{
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("nobody reads this"), 1) << "there is no window";
    EXPECT_EQ(run({u"restore-clipboard"_s}), 0) << output.toStdString();
    EXPECT_EQ(clipboard(), "clipboard before\n");
    EXPECT_EQ(run({u"restore-clipboard"_s}), 1) << "nothing is kept any more";
}

TEST_F(InsertCommandEndToEndTest, withoutTalmoEmptyClipboardLeavesNoProcess)
{
    openQtWindow();
    EXPECT_EQ(insert("typed by a script"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script"_s));
    EXPECT_TRUE(isAlone());
    EXPECT_TRUE(isClipboardEmpty());
}

TEST_F(InsertCommandEndToEndTest, withoutTalmoEndsWithTheDisplay)
{
    openQtWindow();
    copy(u"clipboard before"_s);
    EXPECT_EQ(insert("typed by a script"), 0) << output.toStdString();
    desktop.killServer();
    EXPECT_TRUE(isAlone());
}

TEST_F(InsertCommandEndToEndTest, staleSocketCountsAsNoTalmo)
{
    openQtWindow();
    startTalmo();
    talmo->kill();
    EXPECT_TRUE(QFileInfo::exists(socketPath()));
    EXPECT_EQ(insert("typed by a script"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script"_s));
    startTalmo();
    EXPECT_EQ(insert(" and again"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script and again"_s));
}

TEST_F(InsertCommandEndToEndTest, hangingTalmoIsReportedAndNothingIsTypedTwice)
{
    openQtWindow();
    startTalmo();
    ::kill(static_cast<pid_t>(talmo->processId()), SIGSTOP);
    EXPECT_EQ(insert("typed by a script"), 1);
    EXPECT_TRUE(output.contains("Talmo did not respond.")) << output.toStdString();
    ::kill(static_cast<pid_t>(talmo->processId()), SIGCONT);
}

TEST_F(InsertCommandEndToEndTest, insertsLineEndsAndAnyTextUnchanged)
{
    openQtWindow();
    EXPECT_EQ(insert("one\ntwo\n", {u"--raw"_s}), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"one\\ntwo\\n"_s));
    EXPECT_EQ(insert("", {}), 1);
    EXPECT_EQ(insert("\n", {}), 1);
    EXPECT_TRUE(output.contains("nothing to insert")) << output.toStdString();
}

TEST_F(InsertCommandEndToEndTest, refusesMalformedRequestAndServesTheNext)
{
    openQtWindow();
    startTalmo();
    for (const QByteArray &request : {QByteArray("{\"command\": \"insert\"}\n"), QByteArray("nonsense\n"),
                                      QByteArray("\n"), QByteArray("{\"command\": \"insert\", \"text\": 4}\n")}) {
        QLocalSocket socket;
        socket.connectToServer(socketPath());
        socket.write(request);
        ASSERT_TRUE(testbed::waitUntil([&socket] { return socket.canReadLine(); }, timeout)) << request.toStdString();
        EXPECT_TRUE(socket.readLine().contains("Unknown request")) << request.toStdString();
    }
    QLocalSocket silent; // A client that sends nothing must not block others.
    silent.connectToServer(socketPath());
    EXPECT_EQ(insert("typed by a script"), 0) << output.toStdString();
    EXPECT_TRUE(windowShows(u"typed by a script"_s));
    EXPECT_EQ(quitTalmo(), 0);
}

} // namespace talmo::test
