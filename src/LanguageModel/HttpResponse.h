#pragma once

#include <QByteArray>

#include <optional>

namespace talmo {

struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Parses one HTTP/1.1 response from the bytes of a connection, in pieces of any size. Does no I/O, and holds no more
/// than its limits: a response that is too large or malformed throws Error.
class HttpResponse {
public:
    /// Limit of the status line and headers together; the same again for everything between and after chunks.
    static constexpr qsizetype largestHead = qsizetype(32) * 1024;
    /// An answer is a few sentences, a list of models a few kilobytes.
    static constexpr qsizetype largestBody = qsizetype(1024) * 1024;

    /// Takes the next bytes; bytes after the end of the response are ignored.
    void take(const QByteArray &bytes);
    /// The connection was closed. Throws Error if that truncates the response.
    void takeEnd();

    bool isWhole() const { return m_stage == Stage::Whole; }
    HttpReply reply() const { return {m_status, m_body}; }

    /// 0 until the status line has arrived. Also that of an interim response.
    int status() const { return m_status; }
    /// What has arrived of it so far.
    const QByteArray &body() const { return m_body; }

private:
    enum class Stage { StatusLine, Headers, Body, BodyUntilEnd, ChunkSize, Chunk, ChunkEnd, Trailers, Whole };

    bool advance();
    std::optional<QByteArray> takeLine();
    void takeStatusLine(const QByteArray &line);
    void takeHeader(const QByteArray &line);
    void endHead();
    void takeChunkSize(const QByteArray &line);
    bool takeBody();
    void append(const QByteArray &bytes);

    Stage m_stage = Stage::StatusLine;
    QByteArray m_pending;
    qsizetype m_lineBytes = 0; ///< All bytes so far that are not body.
    int m_status = 0;
    std::optional<qsizetype> m_length;
    bool m_isChunked = false;
    qsizetype m_missing = 0; ///< Bytes left in the body or in the current chunk.
    QByteArray m_body;
};

} // namespace talmo
