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

/// What is to be fetched, and where to.
struct DownloadRequest {
    QUrl address;
    /// Grows while the download goes on and stays when it breaks off, so that the next one can go on from there. Beside
    /// it lies a file that says what it is a part of.
    QString path;
    /// In bytes, where it is known; an answer of another size is refused.
    std::optional<qint64> size;
    /// The content will be checked, so a part may be completed even where the server cannot say that it is the same.
    bool isChecked = false;
};

/// Fetches one large file over HTTPS, or over HTTP from this very machine. A connection that breaks off or says nothing
/// for half a minute is made anew a few times and goes on where it ended. A thread with an event loop.
class ModelDownload {
public:
    /// Bytes on the disk so far, and of how many; none where the server does not say.
    using Progress = std::function<void(qint64 done, std::optional<qint64> total)>;

    explicit ModelDownload(std::shared_ptr<Clock> clock);

    /// Finishes when the whole file is there. Throws Error with what a person can do about it, Cancelled when a stop is
    /// requested. What could be of use to the next try stays on the disk; of what cannot, nothing does.
    QCoro::Task<void> fetch(DownloadRequest request, Progress progress, std::stop_token stop);

    /// Removes what a download left at that path.
    static void discard(const QString &path);

private:
    std::shared_ptr<Clock> m_clock;
};

} // namespace talmo
