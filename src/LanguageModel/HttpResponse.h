#pragma once

#include <QByteArray>

#include <optional>

namespace talmo {

struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Reads one HTTP/1.1 response from the bytes of a connection, in whatever pieces they come. Pure, and no response can
/// make it hold more than its limits: what is larger, or is no response, throws Error.
class HttpResponse {
public:
    /// Status line and headers together, and the same again for what stands between and after chunks.
    static constexpr qsizetype largestHead = qsizetype(32) * 1024;
    /// An answer is a few sentences; a list of models a few kilobytes.
    static constexpr qsizetype largestBody = qsizetype(1024) * 1024;

    /// Takes the next bytes; what comes after the end of the response is ignored.
    void take(const QByteArray &bytes);
    /// The connection has ended. Throws when that cuts the response off.
    void takeEnd();

    bool isWhole() const { return m_stage == Stage::Whole; }
    HttpReply reply() const { return {m_status, m_body}; }

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
    qsizetype m_lineBytes = 0; ///< Everything so far that is not body.
    int m_status = 0;
    std::optional<qsizetype> m_length;
    bool m_isChunked = false;
    qsizetype m_missing = 0; ///< Bytes until the end of the body or of the chunk.
    QByteArray m_body;
};

} // namespace talmo
