#pragma once

#include "Base/Clock.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// What to download, and where to.
struct DownloadRequest {
    QUrl address;
    /// The partial file: grows during the download and is kept if it is interrupted, so that the next one can resume. A
    /// file beside it records which download it belongs to.
    QString path;
    /// In bytes, if known; a response of another size is refused.
    std::optional<qint64> size;
    /// The content's checksum will be verified, so a partial file may be resumed even if the server cannot confirm that
    /// the content is unchanged.
    bool isChecked = false;
};

/// Downloads one large file over HTTPS, or over HTTP from this machine. A connection that breaks, or is silent for 30
/// seconds, is retried a few times and resumes where it stopped. A thread with an event loop.
class ModelDownload {
public:
    /// Bytes on disk so far, and in total; nullopt if the server does not tell.
    using Progress = std::function<void(qint64 done, std::optional<qint64> total)>;

    explicit ModelDownload(std::shared_ptr<Clock> clock);

    /// Finishes when the file is complete. Throws Error with a message for the user, Cancelled if a stop is requested.
    /// A partial file is kept only if the next attempt can resume it.
    QCoro::Task<void> fetch(DownloadRequest request, Progress progress, std::stop_token stop);

    /// Removes the partial file at that path and its notes.
    static void discard(const QString &path);

private:
    std::shared_ptr<Clock> m_clock;
};

} // namespace talmo
