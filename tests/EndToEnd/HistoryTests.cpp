// With a real clipboard history running: it records what the user copies, not what Talmo pastes.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class HistoryEndToEndTest : public TalmoFixture {
protected:
    /// The program's standard output; `input` goes to its standard input.
    QByteArray run(const QString &program, const QStringList &arguments, const QByteArray &input = {})
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
        return process.readAllStandardOutput();
    }

    /// The history, latest first.
    QByteArray history()
    {
        return run(u"copyq"_s, {u"eval"_s, u"--"_s, u"for (i = 0; i < size(); ++i) print(str(read(i)) + ';')"_s});
    }
};

} // namespace

TEST_F(HistoryEndToEndTest, copyQRecordsCopiesButNoDictation)
{
    testbed::ChildProcess copyQ(u"copyq"_s, {}, environment);
    // Copies made before it listens are not recorded.
    int number = 0;
    const auto isRecorded = [this, &number] {
        if (history().isEmpty()) {
            copy(u"copied %1"_s.arg(++number));
        }
        return history().startsWith("copied " + QByteArray::number(number) + '\n');
    };
    ASSERT_TRUE(testbed::pollUntil(isRecorded, timeout)) << copyQ.output().toStdString();
    const QByteArray before = history();
    const QByteArray content = clipboard();
    openQtWindow();
    startTalmo();
    run(QStringLiteral(TALMO_BIN "/talmoctl"), {u"insert"_s}, "dictated");
    EXPECT_TRUE(windowShows(u"dictated"_s));
    EXPECT_TRUE(testbed::pollUntil([&] { return clipboard() == content; }, timeout));
    copy(u"copied later"_s);
    EXPECT_TRUE(testbed::pollUntil([this] { return history().contains("copied later\n;"); }, timeout));
    // In any order: CopyQ may notice the restored clipboard late.
    EXPECT_THAT(history().split(';'), testing::UnorderedElementsAreArray((before + "copied later\n;").split(';')));
}

} // namespace talmo::test
