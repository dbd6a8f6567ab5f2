#include "Recognition/Models/ModelDownload.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Recognition/Models/ModelTransfer.h"

#include <QCoro/QCoroFuture>

#include <QFile>
#include <QNetworkAccessManager>
#include <QPointer>

#include <utility>

namespace talmo {

namespace {

/// A connection silent for this long has failed.
constexpr Duration timeout = std::chrono::seconds(30);
/// Consecutive attempts without any progress before giving up.
constexpr int mostTries = 5;
/// Before the second attempt; each further wait is twice as long.
constexpr Duration firstPause = std::chrono::seconds(1);

/// Ends a stalled transfer.
QCoro::Task<void> watch(QPointer<ModelTransfer> transfer, std::shared_ptr<Clock> clock, std::stop_token over)
{
    qint64 last = -1;
    bool isOver = false;
    try {
        while (transfer && transfer->activity() != last) {
            last = transfer->activity();
            const QFuture<void> pause = clock->sleep(timeout, over);
            co_await pause;
        }
    } catch (const Cancelled &) {
        isOver = true;
    }
    if (transfer && !isOver) {
        transfer->giveUp(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The connection timed out.")));
    }
}

/// The error that ended one connection; null if the file is complete.
struct Outcome {
    std::exception_ptr error;
};

QCoro::Task<Outcome> tryOnce(DownloadRequest request, ModelDownload::Progress progress, std::shared_ptr<Clock> clock,
                             std::stop_token stop)
{
    QNetworkAccessManager manager;
    ModelTransfer transfer(manager, std::move(request), std::move(progress));
    std::stop_source over;
    logEscapes(watch(&transfer, std::move(clock), over.get_token()));
    // Runs on any thread. Destroyed before the transfer, so no callback outlives it.
    const std::stop_callback onStop(stop, [&transfer] {
        QMetaObject::invokeMethod(
            &transfer, [&transfer] { transfer.giveUp(QStringLiteral("Stopped.")); }, Qt::QueuedConnection);
    });
    Outcome outcome;
    try {
        co_await transfer.finished();
    } catch (...) {
        outcome.error = stop.stop_requested() ? std::make_exception_ptr(Cancelled()) : std::current_exception();
    }
    over.request_stop();
    co_return outcome;
}

bool canBeTriedAgain(const std::exception_ptr &error, const QString &path)
{
    try {
        std::rethrow_exception(error);
    } catch (const TransferBroken &) {
        return true;
    } catch (const PartIsUseless &) {
        ModelDownload::discard(path);
        return true;
    } catch (const Cancelled &) {
        return false;
    } catch (...) {
        ModelDownload::discard(path);
        return false;
    }
}

[[noreturn]] void giveUpOver(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const DetailedError &failure) {
        generalLog().error("a download failed: %@", {wholeDescription(failure)});
        throw;
    }
}

} // namespace

ModelDownload::ModelDownload(std::shared_ptr<Clock> clock)
    : m_clock(std::move(clock))
{
}

QCoro::Task<void> ModelDownload::fetch(DownloadRequest request, Progress progress, std::stop_token stop)
{
    const auto clock = m_clock;
    int tries = 0;
    qint64 longest = 0;
    Duration pause = firstPause;
    while (true) {
        const Outcome outcome = co_await tryOnce(request, progress, clock, stop);
        if (!outcome.error) {
            co_return;
        }
        // Only progress beyond the longest part so far counts: a server that always breaks off at the same place will
        // never finish.
        if (const qint64 size = QFile(request.path).size(); size > longest) {
            longest = size;
            tries = 0;
            pause = firstPause;
        }
        ++tries;
        if (!canBeTriedAgain(outcome.error, request.path) || tries >= mostTries) {
            if (QFile(request.path).size() == 0) {
                discard(request.path);
            }
            giveUpOver(outcome.error);
        }
        co_await clock->sleep(pause, stop);
        pause *= 2;
    }
}

void ModelDownload::discard(const QString &path)
{
    QFile::remove(path);
    QFile::remove(notesPath(path));
}

} // namespace talmo
