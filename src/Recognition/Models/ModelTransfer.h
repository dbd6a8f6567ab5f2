#pragma once

#include "Base/Completion.h"
#include "Base/DetailedError.h"
#include "Recognition/Models/ModelDownload.h"

#include <QFile>
#include <QNetworkReply>
#include <QObject>

#include <memory>

class QNetworkAccessManager;

namespace talmo {

/// The connection failed in a way that a retry may overcome.
class TransferBroken : public DetailedError {
public:
    using DetailedError::DetailedError;
};

/// The network failed, not the server.
class ServerUnreachable : public TransferBroken {
public:
    explicit ServerUnreachable(const QString &detail);
};

/// The partial file does not match the server's: retry from the beginning.
class PartIsUseless : public Error {
public:
    using Error::Error;
};

/// The server's file differs from the one on record. The description is for the log.
class RenewedFile : public Error {
public:
    using Error::Error;
};

/// One server response being appended to a file. A thread with an event loop.
class ModelTransfer final : public QObject {
public:
    ModelTransfer(QNetworkAccessManager &manager, DownloadRequest request, ModelDownload::Progress progress);
    ~ModelTransfer() override;

    /// Finishes once the last byte is on disk; fails with TransferBroken, PartIsUseless, or Error if a retry cannot
    /// help.
    QFuture<void> finished() { return m_completion->future(); }
    /// Increases with all data that arrives.
    qint64 activity() const { return m_activity; }
    /// Aborts with TransferBroken.
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
    QUrl m_place; ///< The address, or the target of the last redirect.
    QFile m_file;
    QNetworkReply *m_reply = nullptr;
    std::optional<qint64> m_total;
    qint64 m_activity = 0;
    bool m_hasHeaders = false;
    /// The partial file was already complete.
    bool m_isWhole = false;
};

/// The notes beside a partial file.
QString notesPath(const QString &partPath);

} // namespace talmo
