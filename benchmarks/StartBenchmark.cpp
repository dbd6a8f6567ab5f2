#include "Benchmarks.h"
#include "ChildProcess.h"

namespace talmo::benchmarks {

namespace {

const QString talmoRow = QStringLiteral("start -> key live");

/// Until its server answers the first command.
void startCopyQ(TalmoDesktop &on, Figures &figures)
{
    const auto run = [&on](const QStringList &arguments) {
        QProcess process;
        process.setProcessEnvironment(on.environment);
        // What CopyQ leaves running must not keep a pipe of ours open.
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(QStringLiteral("copyq"), arguments);
        process.waitForFinished(static_cast<int>(TalmoDesktop::timeout.count()));
    };
    const Time begin = std::chrono::steady_clock::now();
    run({QStringLiteral("--start-server"), QStringLiteral("eval"), QStringLiteral("1")});
    figures.row(QStringLiteral("start -> CopyQ answers"), QStringLiteral("ms"), talmoRow)
        .add(begin, std::chrono::steady_clock::now());
    run({QStringLiteral("exit")});
}

void startKeePassXC(TalmoDesktop &on, Figures &figures)
{
    const Time begin = std::chrono::steady_clock::now();
    const testbed::ChildProcess program(QStringLiteral("keepassxc"), {}, on.environment);
    if (on.desktop.waitForActiveWindow(QStringLiteral("KeePassXC"), TalmoDesktop::timeout)) {
        figures.row(QStringLiteral("start -> KeePassXC's window"), QStringLiteral("ms"), talmoRow)
            .add(begin, std::chrono::steady_clock::now());
    }
}

} // namespace

void measureStarts(TalmoDesktop &on, Figures &figures, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        const auto [begin, ready] = on.startTalmo();
        figures.row(talmoRow).add(begin, ready);
        startCopyQ(on, figures);
        startKeePassXC(on, figures);
    }
}

} // namespace talmo::benchmarks
