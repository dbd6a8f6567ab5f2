#include "Recognition/Models/ModelInstaller.h"

#include "Base/Error.h"
#include "Recognition/Models/ModelArchive.h"
#include "Recognition/Models/ModelDownload.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr qint64 megabyte = 1000000;

/// Models hardly compress; an archive that expands by more than this factor is not a model.
constexpr qint64 largestSwelling = 20;
constexpr qint64 alwaysAllowed = 64 * megabyte;
constexpr qint64 largestModel = 16000 * megabyte;
constexpr int mostFiles = 2000;

/// Passes on visible changes only: a new phase, or another 0.5 %.
ModelInstaller::OnProgress throttled(ModelInstaller::OnProgress onProgress)
{
    const auto last = std::make_shared<std::optional<ModelProgress>>();
    return [last, onProgress = std::move(onProgress)](const ModelProgress &progress) {
        constexpr qint64 steps = 200;
        const qint64 step = progress.total ? std::max(*progress.total / steps, qint64(1)) : megabyte;
        if (!*last || (*last)->phase != progress.phase || progress.done >= (*last)->done + step ||
            progress.done < (*last)->done || progress.done == progress.total) {
            *last = progress;
            onProgress(progress);
        }
    };
}

void requireChecksum(const QString &path, const QByteArray &expected, const ModelInstaller::OnProgress &onProgress,
                     const std::stop_token &stop)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw Error(QStringLiteral("The downloaded file cannot be read: %1").arg(file.errorString()));
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    while (!file.atEnd()) {
        if (stop.stop_requested()) {
            throw Cancelled();
        }
        hash.addData(file.read(megabyte));
        onProgress({ModelProgress::Phase::Checking, file.pos(), file.size()});
    }
    if (hash.result().toHex() != expected) {
        ModelDownload::discard(path);
        throw Error(QStringLiteral("Checksum mismatch: expected %2, got %1.")
                        .arg(QString::fromLatin1(hash.result().toHex()), QString::fromLatin1(expected)));
    }
}

/// Returns the folder with the model in it.
QString unpack(const ModelStore &store, const QString &path, const ModelInstaller::OnProgress &onProgress,
               const std::stop_token &stop)
{
    const QString workshop = store.makeWorkshop();
    const qint64 size = QFileInfo(path).size();
    const UnpackingLimits limits{std::min(std::max(size * largestSwelling, alwaysAllowed), largestModel), mostFiles};
    try {
        unpackArchive(
            path, workshop, limits,
            [&onProgress, size](qint64 done) {
                onProgress({ModelProgress::Phase::Unpacking, std::min(done, size), size});
            },
            stop);
    } catch (const Cancelled &) {
        throw;
    } catch (const Error &) {
        ModelDownload::discard(path); // A new download may be intact.
        throw;
    }
    return innermostFolder(workshop);
}

} // namespace

std::optional<double> ModelProgress::share() const
{
    if (!total || *total <= 0) {
        return std::nullopt;
    }
    return static_cast<double>(done) / static_cast<double>(*total);
}

QString ModelProgress::description() const
{
    const QString amount = total ? QStringLiteral("%1 of %2 MB").arg(done / megabyte).arg(*total / megabyte)
                                 : QStringLiteral("%1 MB").arg(done / megabyte);
    switch (phase) {
    case Phase::Downloading:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Downloading: ")) + amount;
    case Phase::Checking:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Verifying"));
    case Phase::Unpacking:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Unpacking"));
    case Phase::Trying:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Testing"));
    }
    return {};
}

ModelInstaller::ModelInstaller(ModelStore store, std::shared_ptr<Clock> clock, Try tryModel)
    : m_store(std::move(store)),
      m_clock(std::move(clock)),
      m_try(std::move(tryModel))
{
}

QCoro::Task<void> ModelInstaller::install(ModelEntry entry, OnProgress onProgress, std::stop_token stop) const
{
    // Copies, since the installer may be destroyed before the task ends.
    const ModelStore store = m_store;
    const Try tryModel = m_try;
    const auto clock = m_clock;
    const OnProgress report = throttled(std::move(onProgress));
    const auto lock = store.lock();
    const QString part = store.partPath(entry.id);
    const DownloadRequest request{entry.address, part, entry.size, !entry.sha256.isEmpty()};
    ModelDownload download(clock);
    const ModelDownload::Progress onBytes = [report](qint64 done, std::optional<qint64> total) {
        report({ModelProgress::Phase::Downloading, done, total});
    };
    co_await download.fetch(request, onBytes, stop);
    if (!entry.sha256.isEmpty()) {
        requireChecksum(part, entry.sha256, report, stop);
    }
    const QString unpacked = unpack(store, part, report, stop);
    report({ModelProgress::Phase::Trying, 0, std::nullopt});
    describeModel(unpacked, entry);
    tryModel(unpacked);
    store.takeIn(unpacked, entry.id);
    ModelDownload::discard(part);
}

} // namespace talmo
