#include "Benchmarks.h"
#include "ChildProcess.h"
#include "ThisProcess.h"

#include "Base/Error.h"
#include "Base/Task.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/Models/ModelInstaller.h"

#include <QCoro/QCoroFuture>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>

namespace talmo::benchmarks {

namespace {

constexpr int megabytes = 500;
const QString plainRow = QStringLiteral("curl, sha256sum and tar of the same file");

void shell(const QString &script, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral("bash"), {QStringLiteral("-ec"), QStringLiteral("set -o pipefail; ") + script});
    process.waitForFinished(-1);
    if (process.exitCode() != 0) {
        throw Error(QStringLiteral("%1\n%2").arg(script, QString::fromUtf8(process.readAllStandardError())));
    }
}

/// Of /dev/urandom, like the weights of a model: what could be compressed would make the transfer look fast.
QByteArray makeArchive(const QString &folder)
{
    shell(QStringLiteral("mkdir toy; head -c %1M /dev/urandom > toy/model.onnx; echo a > toy/tokens.txt;"
                         "tar -c toy | gzip -1 > model.tar.gz; sha256sum model.tar.gz | cut -d' ' -f1 > sum; rm -r toy")
              .arg(megabytes),
          folder);
    QFile sum(folder + QStringLiteral("/sum"));
    return sum.open(QFile::ReadOnly) ? sum.readAll().trimmed() : QByteArray();
}

/// Returns the address of the folder's files.
QString serve(testbed::ChildProcess &server)
{
    const auto line = server.waitForLine(QStringLiteral(" port "), TalmoDesktop::timeout);
    if (!line) {
        throw Error(QStringLiteral("The file server did not start:\n") + server.output());
    }
    static const QRegularExpression port(QStringLiteral(" port (\\d+)"));
    return QStringLiteral("http://127.0.0.1:") + port.match(line->text).captured(1);
}

/// Waiting for a task that throws would never return.
QCoro::Task<QString> problemOf(QCoro::Task<void> task)
{
    QString problem;
    try {
        co_await task;
    } catch (const std::exception &error) {
        problem = QString::fromUtf8(error.what());
    }
    co_return problem;
}

void install(const ModelEntry &entry, const QString &folder, Figures &figures)
{
    ModelInstaller installer(ModelStore(folder + QStringLiteral("/models")), std::make_shared<TimerFdClock>(),
                             [](const QString &) { return std::optional<double>(); });
    const double before = ThisProcess::residentKilobytes();
    double most = before;
    const auto watch = [&most](const ModelProgress &) { most = std::max(most, ThisProcess::residentKilobytes()); };
    const Time begin = std::chrono::steady_clock::now();
    const QString problem = QCoro::waitFor(problemOf(installer.install(entry, watch, {}, {})));
    if (!problem.isEmpty()) {
        throw Error(problem);
    }
    figures.row(QStringLiteral("download, checksum, unpacking of a 500 MB model"), QStringLiteral("ms"), plainRow)
        .add(begin, std::chrono::steady_clock::now());
    figures.row(QStringLiteral("  resident set meanwhile, at most"), QStringLiteral("MB")).add((most - before) / 1024);
}

} // namespace

void measureModel(Figures &figures, int rounds)
{
    const QTemporaryDir files;
    ModelEntry entry;
    entry.id = QStringLiteral("toy");
    entry.languages = QStringList{QStringLiteral("en")};
    entry.licence = QStringLiteral("public domain");
    entry.sha256 = makeArchive(files.path());
    testbed::ChildProcess server(QStringLiteral("python3"),
                                 {QStringLiteral("-u"), QStringLiteral("-m"), QStringLiteral("http.server"),
                                  QStringLiteral("--bind"), QStringLiteral("127.0.0.1"), QStringLiteral("--directory"),
                                  files.path(), QStringLiteral("0")},
                                 QProcessEnvironment::systemEnvironment());
    entry.address = QUrl(serve(server) + QStringLiteral("/model.tar.gz"));
    entry.size = QFile(files.filePath(QStringLiteral("model.tar.gz"))).size();
    for (int round = 0; round < rounds; ++round) {
        const QTemporaryDir plain;
        const Time begin = std::chrono::steady_clock::now();
        shell(QStringLiteral("curl -sf %1 > model; sha256sum model > sum; tar -xzf model; rm model")
                  .arg(entry.address.toString()),
              plain.path());
        figures.row(plainRow).add(begin, std::chrono::steady_clock::now());
        const QTemporaryDir home;
        install(entry, home.path(), figures);
    }
}

} // namespace talmo::benchmarks
