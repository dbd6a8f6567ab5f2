#pragma once

#include "Base/Error.h"
#include "Base/SerialExecutor.h"
#include "Recognition/Models/ModelInstaller.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestFileServer.h"
#include "Support/TestLoop.h"
#include "Waiting.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <optional>
#include <vector>

namespace talmo::test {

/// A real connection to a misbehaving server, and a real disk.
class ModelInstallerFixture : public testing::Test {
protected:
    ModelInstallerFixture()
    {
        QProcess maker;
        maker.start(u"python3"_s, {QStringLiteral(TALMO_TESTS_FOLDER "/Support/make_archives.py"), files.path()});
        EXPECT_TRUE(maker.waitForFinished() && maker.exitCode() == 0) << maker.readAllStandardError().constData();
        server = std::make_unique<TestFileServer>(files.path());
    }
    ModelEntry entry(const QString &path) const
    {
        ModelEntry made;
        made.id = u"toy"_s;
        made.languages = QStringList{u"en"_s};
        made.address = QUrl(server->address(path));
        made.licence = u"public domain"_s;
        return made;
    }
    /// An entry with a size and a checksum.
    ModelEntry measured(const QString &path) const
    {
        auto made = entry(path);
        QFile file(files.filePath(path.section(u'?', 0, 0).mid(1)));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        const QByteArray content = file.readAll();
        made.size = content.size();
        made.sha256 = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        return made;
    }
    QFuture<void> begin(const ModelEntry &wanted)
    {
        const auto onProgress = [this](const ModelProgress &each) { progress.push_back(each); };
        return executor->run<void>(
            [this, wanted, onProgress] { return installer.install(wanted, onProgress, stop.get_token(), terms); });
    }
    /// The error as the log has it; empty if installed. Pauses between retries take no time.
    QString install(const ModelEntry &wanted)
    {
        const auto future = begin(wanted);
        return outcome(future);
    }
    QString outcome(QFuture<void> future)
    {
        constexpr Duration longestPause = std::chrono::seconds(16);
        const auto isOver = [&] {
            const auto &asleep = clock->requestedSleeps();
            const bool pauses = !asleep.empty() && asleep.back() <= longestPause;
            if (!future.isFinished() && pauses && clock->sleeperCount() > 0) {
                clock->advance(longestPause);
            }
            return future.isFinished();
        };
        EXPECT_TRUE(testbed::waitUntil(isOver, std::chrono::seconds(30)));
        try {
            future.waitForFinished();
        } catch (const Error &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }
    QStringList inModelsFolder() const
    {
        return QDir(home.filePath(u"models"_s))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    void expectInstalled() const
    {
        EXPECT_EQ(inModelsFolder(), (QStringList{u".lock"_s, u"toy"_s}));
        EXPECT_EQ(QFile(home.filePath(u"models/toy/model.onnx"_s)).size(), 5001);
    }
    /// Expects neither the model nor an incomplete one, except for a partial download.
    void expectNothing(const QStringList &left = {}) const
    {
        EXPECT_EQ(inModelsFolder(), QStringList{u".lock"_s} + left);
    }

    QTemporaryDir files;
    QTemporaryDir home;
    std::unique_ptr<TestFileServer> server;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    ModelInstaller::Try tryModel = [](const QString &) { return std::optional<double>(); };
    InstallationTerms terms;
    ModelInstaller installer{ModelStore(home.filePath(u"models"_s)), clock,
                             [this](const QString &folder) { return tryModel(folder); }};
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread();
    std::stop_source stop;
    std::vector<ModelProgress> progress;
};

} // namespace talmo::test
