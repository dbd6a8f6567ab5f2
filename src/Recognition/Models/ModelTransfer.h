#pragma once

#include "Base/Completion.h"
#include "Base/Error.h"
#include "Recognition/Models/ModelDownload.h"

#include <QFile>
#include <QNetworkReply>
#include <QObject>

#include <memory>

class QNetworkAccessManager;

namespace talmo {

/// The connection failed in a way that may be over when it is tried again.
class TransferBroken : public Error {
public:
    using Error::Error;
};

/// What is on the disk does not go with what the server has: to be tried again from the beginning.
class PartIsUseless : public Error {
public:
    using Error::Error;
};

/// One answer of a server on its way into a file, from where the file ends. A thread with an event loop.
class ModelTransfer final : public QObject {
public:
    ModelTransfer(QNetworkAccessManager &manager, DownloadRequest request, ModelDownload::Progress progress);
    ~ModelTransfer() override;

    /// Finishes with the last byte on the disk; fails with TransferBroken, PartIsUseless, or Error for what no further
    /// try can mend.
    QFuture<void> finished() { return m_completion->future(); }
    /// Counts up with everything that arrives.
    qint64 activity() const { return m_activity; }
    /// Breaks off, with TransferBroken.
    void giveUp(const QString &why);

private:
    void begin(QNetworkAccessManager &manager);
    void takeHeaders();
    void takeContinuation();
    void checkTotal() const;
    void checkSpace() const;
    void writeNotes() const;
    void read();
    void end();
    void fail(std::exception_ptr error);
    template <typename Step>
    void guarded(Step step);

    DownloadRequest m_request;
    ModelDownload::Progress m_progress;
    std::shared_ptr<Completion<void>> m_completion = Completion<void>::make();
    QUrl m_place; ///< The address, or where the server has led since.
    QFile m_file;
    QNetworkReply *m_reply = nullptr;
    std::optional<qint64> m_total;
    qint64 m_activity = 0;
    bool m_hasHeaders = false;
    /// What is on the disk was all there is.
    bool m_isWhole = false;
};

/// The file beside a part.
QString notesPath(const QString &partPath);

} // namespace talmo
