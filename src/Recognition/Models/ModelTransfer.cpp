#include "Recognition/Models/ModelTransfer.h"

#include "Files/PrivateFile.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Models/ModelSize.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QStorageInfo>

#include <utility>

namespace talmo {

namespace {

/// In bytes; no model is this large.
constexpr qint64 largestFile = qint64(8) * 1024 * 1024 * 1024;

/// How much received data may wait to be written, in bytes. Qt keeps everything in memory that is not yet read,
/// hundreds of megabytes of a large model.
constexpr qint64 mostUnwritten = qint64(1024) * 1024;

constexpr int okStatus = 200;
constexpr int partialStatus = 206;
constexpr int tooManyRequestsStatus = 429;
constexpr int requestTimeoutStatus = 408;
constexpr int rangeNotSatisfiableStatus = 416;
constexpr int firstServerError = 500;

/// Headers that identify a version of the file, best first.
constexpr const char *validators[] = {"ETag", "Last-Modified"};

QNetworkProxy proxyFor(const QUrl &address)
{
    if (address.scheme() == QStringLiteral("http")) {
        return QNetworkProxy::NoProxy; // This machine.
    }
    const auto proxies = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(address));
    return proxies.isEmpty() ? QNetworkProxy(QNetworkProxy::NoProxy) : proxies.first();
}

/// The notes on a partial file: its address, and the server's validator, if any. Empty if there are none.
QJsonObject readNotes(const QString &partPath)
{
    QFile file(notesPath(partPath));
    return file.open(QFile::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

DetailedError untrusted(const QString &detail)
{
    return {QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "The server cannot be trusted. Check this computer's date and network, then try again.")),
            detail};
}

} // namespace

ServerUnreachable::ServerUnreachable(const QString &detail)
    : TransferBroken(
          QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The server cannot be reached. Check the network connection, then "
                                                    "try again; the download goes on where it stopped.")),
          detail)
{
}

QString notesPath(const QString &partPath)
{
    return partPath + QStringLiteral(".json");
}

ModelTransfer::ModelTransfer(QNetworkAccessManager &manager, DownloadRequest request, ModelDownload::Progress progress)
    : m_request(std::move(request)),
      m_progress(std::move(progress)),
      m_place(m_request.address),
      m_file(m_request.path)
{
    guarded([this, &manager] { begin(manager); });
}

ModelTransfer::~ModelTransfer()
{
    if (m_reply != nullptr) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
}

/// Runs a step of the transfer; an exception ends the transfer.
template <typename Step>
void ModelTransfer::guarded(Step step)
{
    try {
        step();
    } catch (...) {
        fail(std::current_exception());
    }
}

void ModelTransfer::begin(QNetworkAccessManager &manager)
{
    // Unbuffered, so that a full disk is noticed at the write that fails.
    if (!m_file.open(QFile::ReadWrite | QFile::Unbuffered, PrivateFile::permissions)) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "Talmo cannot write to its folder for models. Check the folder's permissions.")),
            m_file.errorString());
    }
    const QJsonObject notes = readNotes(m_request.path);
    const QString validator = notes.value(QStringLiteral("validator")).toString();
    const bool canGoOn = notes.value(QStringLiteral("address")).toString() == m_request.address.toString() &&
                         (m_request.isChecked || !validator.isEmpty());
    if (!canGoOn) {
        m_file.resize(0);
    }
    m_file.seek(m_file.size());

    QNetworkRequest request(m_request.address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Talmo"));
    // Qt sets no limit to the size of a response's headers, and its thread goes on reading an endless one even after
    // the reply was aborted. Those of HTTP/1.1 it reads byte by byte, less than a megabyte per second; a header block
    // of HTTP/2 would arrive as fast as the network.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Sizes and offsets must be those of the file itself.
    request.setRawHeader("Accept-Encoding", "identity");
    if (m_file.size() > 0) {
        request.setRawHeader("Range", "bytes=" + QByteArray::number(m_file.size()) + "-");
        if (!validator.isEmpty()) {
            request.setRawHeader("If-Range", validator.toLatin1());
        }
    }
    manager.setProxy(proxyFor(m_request.address));
    m_reply = manager.get(request);
    m_reply->setReadBufferSize(mostUnwritten);
    connect(m_reply, &QNetworkReply::redirected, this, [this](const QUrl &target) {
        if (isPermittedRedirect(m_place, target)) {
            m_place = target;
            Q_EMIT m_reply->redirectAllowed();
        } else {
            fail(std::make_exception_ptr(
                untrusted(QStringLiteral("redirected to %1, which is not HTTPS").arg(target.toString()))));
        }
    });
    connect(m_reply, &QNetworkReply::readyRead, this, [this] { guarded([this] { read(); }); });
    connect(m_reply, &QNetworkReply::finished, this, [this] { guarded([this] { end(); }); });
}

void ModelTransfer::giveUp(const QString &why)
{
    fail(std::make_exception_ptr(TransferBroken(why, {})));
}

void ModelTransfer::fail(std::exception_ptr error)
{
    m_completion->fail(std::move(error));
    if (m_reply != nullptr) {
        // The destructor aborts the reply; aborting it within one of its signals is not safe.
        m_reply->disconnect(this);
    }
}

/// Checks the response headers before anything is written to the file.
void ModelTransfer::takeHeaders()
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    switch (status) {
    case okStatus: {
        // The whole file, even if a range was requested.
        m_file.resize(0);
        m_file.seek(0);
        const auto length = m_reply->header(QNetworkRequest::ContentLengthHeader);
        m_total = length.isValid() ? std::optional(length.toLongLong()) : std::nullopt;
        break;
    }
    case partialStatus:
        takeContinuation();
        break;
    case rangeNotSatisfiableStatus:
        if (m_reply->rawHeader("Content-Range") == "bytes */" + QByteArray::number(m_file.size())) {
            m_total = m_file.size(); // The file was already complete.
            m_isWhole = true;
            break;
        }
        throw PartIsUseless(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The server cannot resume this download; starting over.")));
    default:
        const auto description = QStringLiteral(
            QT_TRANSLATE_NOOP("Talmo", "The server does not deliver this file at present. Try again later."));
        const QString detail = QStringLiteral("%1 %2").arg(status).arg(
            m_reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString());
        if (status >= firstServerError || status == tooManyRequestsStatus || status == requestTimeoutStatus) {
            throw TransferBroken(description, detail);
        }
        throw DetailedError(description, detail);
    }
    m_hasHeaders = true;
    checkTotal();
    checkSpace();
    writeNotes();
}

void ModelTransfer::takeContinuation()
{
    static const QRegularExpression range(QStringLiteral("^bytes (\\d+)-\\d+/(\\d+|\\*)$"));
    const auto match = range.match(QString::fromLatin1(m_reply->rawHeader("Content-Range")));
    if (!match.hasMatch() || match.captured(1).toLongLong() != m_file.size()) {
        throw PartIsUseless(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The server resumed at the wrong offset.")));
    }
    if (match.captured(2) != QStringLiteral("*")) {
        m_total = match.captured(2).toLongLong();
    }
}

void ModelTransfer::checkTotal() const
{
    if (m_total && m_request.size && *m_total != *m_request.size) {
        throw RenewedFile(QStringLiteral("The file on the server has the wrong size: expected %2 bytes, got %1.")
                              .arg(*m_total)
                              .arg(*m_request.size));
    }
}

void ModelTransfer::checkSpace() const
{
    const qint64 needed = m_total.value_or(m_request.size.value_or(0)) - m_file.size();
    const qint64 free = QStorageInfo(QFileInfo(m_request.path).absolutePath()).bytesAvailable();
    if (free >= 0 && needed > free) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "There is not enough space on the disk. Free some, then try again. Needed: ")) +
                readableSize(needed),
            QStringLiteral("%1 free").arg(readableSize(free)));
    }
}

void ModelTransfer::writeNotes() const
{
    QString validator;
    for (const char *name : validators) {
        const QString mark = QString::fromLatin1(m_reply->rawHeader(name));
        const bool isWeak = mark.startsWith(QStringLiteral("W/")); // Does not guarantee byte-for-byte equality.
        validator = validator.isEmpty() && !isWeak ? mark : validator;
    }
    const QJsonObject notes{{QStringLiteral("address"), m_request.address.toString()},
                            {QStringLiteral("validator"), validator}};
    PrivateFile::write(notesPath(m_request.path), QJsonDocument(notes).toJson());
}

void ModelTransfer::read()
{
    if (!m_hasHeaders) {
        takeHeaders();
    }
    const QByteArray bytes = m_reply->readAll();
    if (m_isWhole) {
        return; // The body is an error page.
    }
    const auto limit = m_total ? m_total : m_request.size;
    if (m_file.size() + bytes.size() > limit.value_or(largestFile)) {
        throw PartIsUseless(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The server sent more data than announced.")));
    }
    if (m_file.write(bytes) != bytes.size()) {
        throw DetailedError(QStringLiteral(QT_TRANSLATE_NOOP(
                                "Talmo", "The download cannot be saved. Free some space on the disk, then try again.")),
                            m_file.errorString());
    }
    m_activity += bytes.size();
    m_progress(m_file.size(), limit);
}

void ModelTransfer::end()
{
    const auto problem = m_reply->error();
    const bool isAnswered = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    if (isAnswered && !m_hasHeaders) {
        takeHeaders();
    }
    if (problem == QNetworkReply::SslHandshakeFailedError) {
        throw untrusted(m_reply->errorString());
    }
    if (problem != QNetworkReply::NoError && !m_isWhole) {
        throw ServerUnreachable(m_reply->errorString());
    }
    read();
    if (m_total && m_file.size() < *m_total) {
        throw TransferBroken(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The connection closed before the download was complete.")), {});
    }
    if (m_request.size && m_file.size() != *m_request.size) {
        throw RenewedFile(QStringLiteral("The file on the server has the wrong size: expected %2 bytes, got %1.")
                              .arg(m_file.size())
                              .arg(*m_request.size));
    }
    m_completion->finish();
}

} // namespace talmo
