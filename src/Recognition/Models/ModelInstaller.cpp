#include "Recognition/Models/ModelInstaller.h"

#include "Base/Log.h"
#include "Recognition/Models/ModelArchive.h"
#include "Recognition/Models/ModelDownload.h"
#include "Recognition/Models/ModelSize.h"
#include "Recognition/Models/ModelTransfer.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <utility>

namespace talmo {

namespace {

constexpr qint64 megabyte = 1000000;

/// Models hardly compress; an archive that expands by more than this factor is not a model.
constexpr qint64 largestSwelling = 20;
constexpr qint64 alwaysAllowed = 64 * megabyte;
constexpr qint64 largestModel = 16000 * megabyte;
constexpr int mostFiles = 2000;

/// Passes on visible changes only: a new phase, another 0.5 %, or once a second.
ModelInstaller::OnProgress throttled(ModelInstaller::OnProgress onProgress, const std::shared_ptr<Clock> &clock)
{
    const auto last = std::make_shared<std::optional<ModelProgress>>();
    const auto lastTime = std::make_shared<Instant>();
    return [last, lastTime, clock, onProgress = std::move(onProgress)](const ModelProgress &progress) {
        constexpr qint64 steps = 200;
        const qint64 step = progress.total ? std::max(*progress.total / steps, qint64(1)) : megabyte;
        const Instant now = clock->now();
        if (!*last || (*last)->phase != progress.phase || progress.done >= (*last)->done + step ||
            progress.done < (*last)->done || progress.done == progress.total ||
            now - *lastTime >= std::chrono::seconds(1)) {
            *last = progress;
            *lastTime = now;
            onProgress(progress);
        }
    };
}

void requireChecksum(const QString &path, const QByteArray &expected, const ModelInstaller::OnProgress &onProgress,
                     const std::stop_token &stop)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The downloaded file cannot be read. Try again.")),
            file.errorString());
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    while (!file.atEnd()) {
        if (stop.stop_requested()) {
            throw Cancelled();
        }
        hash.addData(file.read(megabyte));
        onProgress({ModelProgress::Phase::Checking, file.pos(), file.size(), {}});
    }
    if (hash.result().toHex() != expected) {
        ModelDownload::discard(path);
        throw RenewedFile(QStringLiteral("Checksum mismatch: expected %2, got %1.")
                              .arg(QString::fromLatin1(hash.result().toHex()), QString::fromLatin1(expected)));
    }
}

/// Some models are a single file, which no archive holds.
bool isSingleFile(const QUrl &address)
{
    return address.path().endsWith(QStringLiteral(".onnx"));
}

/// Returns the folder with the model in it.
QString unpack(const ModelStore &store, const QString &path, const QUrl &address,
               const ModelInstaller::OnProgress &onProgress, const std::stop_token &stop)
{
    QString workshop = store.makeWorkshop();
    if (isSingleFile(address)) {
        QFile file(path);
        if (!file.copy(workshop + QLatin1Char('/') + address.fileName())) {
            throw DetailedError(
                QStringLiteral(QT_TRANSLATE_NOOP(
                    "Talmo", "The download cannot be saved. Free some space on the disk, then try again.")),
                file.errorString());
        }
        return workshop;
    }
    const qint64 size = QFileInfo(path).size();
    const UnpackingLimits limits{std::min(std::max(size * largestSwelling, alwaysAllowed), largestModel), mostFiles};
    try {
        unpackArchive(
            path, workshop, limits,
            [&onProgress, size](qint64 done) {
                onProgress({ModelProgress::Phase::Unpacking, std::min(done, size), size, {}});
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

/// "35 s", "4 min"
QString duration(double seconds)
{
    constexpr double minute = 60;
    return seconds < 2 * minute ? QStringLiteral("%1 s").arg(std::ceil(seconds), 0, 'f', 0)
                                : QStringLiteral("%1 min").arg(std::ceil(seconds / minute), 0, 'f', 0);
}

/// The sentence that lets the user decide; the details are in the log.
Error renewedError(const ModelEntry &entry, const RenewedFile &error)
{
    generalLog().error("%@ is not the file on record: %@", {entry.address.toString(), error.localizedDescription()});
    return Error(QStringLiteral(QT_TRANSLATE_NOOP(
                     "Talmo", "The file on the server is not the one that Talmo knows; its maker has probably renewed "
                              "it. Update Talmo, or accept the new file with this command: ")) +
                 QStringLiteral("talmoctl model install %1 --accept-renewed").arg(entry.id));
}

} // namespace

ModelTooSlow::ModelTooSlow(double shareOfSpeech)
    : Error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "This model is too slow for this computer: ")) +
            QStringLiteral("%1 s for each second of speech").arg(shareOfSpeech, 0, 'f', 1))
{
}

std::optional<double> ModelProgress::share() const
{
    if (!total || *total <= 0) {
        return std::nullopt;
    }
    return static_cast<double>(done) / static_cast<double>(*total);
}

QString ModelProgress::description(const Lookup &text) const
{
    QString amount =
        total ? text(QT_TRANSLATE_NOOP("Talmo", "%1 of %2")).arg(wholeMegabytes(done)).arg(readableSize(*total))
              : QStringLiteral("%1 MB").arg(wholeMegabytes(done));
    if (bytesPerSecond && *bytesPerSecond > 0) {
        amount += QStringLiteral(", %1 MB/s").arg(*bytesPerSecond / double(megabyte), 0, 'f', 1);
        if (total) {
            const QString left = duration(double(*total - done) / *bytesPerSecond);
            amount += QStringLiteral(", ") + text(QT_TRANSLATE_NOOP("Talmo", "%1 left")).arg(left);
        }
    }
    switch (phase) {
    case Phase::Downloading:
        return text(QT_TRANSLATE_NOOP("Talmo", "Downloading: ")) + amount;
    case Phase::Checking:
        return text(QT_TRANSLATE_NOOP("Talmo", "Verifying"));
    case Phase::Unpacking:
        return text(QT_TRANSLATE_NOOP("Talmo", "Unpacking"));
    case Phase::Trying:
        return text(QT_TRANSLATE_NOOP("Talmo", "Testing"));
    }
    return {};
}

ModelInstaller::ModelInstaller(ModelStore store, std::shared_ptr<Clock> clock, Try tryModel)
    : m_store(std::move(store)),
      m_clock(std::move(clock)),
      m_try(std::move(tryModel))
{
}

QCoro::Task<void> ModelInstaller::install(ModelEntry entry, OnProgress onProgress, std::stop_token stop,
                                          InstallationTerms terms) const
{
    // Copies, since the installer may be destroyed before the task ends.
    const ModelStore store = m_store;
    const Try tryModel = m_try;
    const auto clock = m_clock;
    const OnProgress report = throttled(std::move(onProgress), clock);
    if (terms.acceptsRenewed) {
        entry.size.reset();
        entry.sha256.clear();
    }
    const auto lock = store.lock();
    const QString part = store.partPath(entry.id);
    const DownloadRequest request{entry.address, part, entry.size, !entry.sha256.isEmpty()};
    ModelDownload download(clock);
    const ModelDownload::Progress onBytes = [report](qint64 done, std::optional<qint64> total) {
        report({ModelProgress::Phase::Downloading, done, total, {}});
    };
    std::optional<Error> renewed;
    try {
        co_await download.fetch(request, onBytes, stop);
        if (!entry.sha256.isEmpty()) {
            requireChecksum(part, entry.sha256, report, stop);
        }
    } catch (const RenewedFile &error) {
        renewed = renewedError(entry, error);
    }
    if (renewed) {
        throw *renewed;
    }
    const QString unpacked = unpack(store, part, entry.address, report, stop);
    report({ModelProgress::Phase::Trying, 0, std::nullopt, {}});
    describeModel(unpacked, entry);
    const auto share = tryModel(unpacked);
    if (share && terms.largestShareOfSpeech && *share > *terms.largestShareOfSpeech) {
        ModelDownload::discard(part);
        throw ModelTooSlow(*share);
    }
    store.takeIn(unpacked, entry.id);
    ModelDownload::discard(part);
}

} // namespace talmo
