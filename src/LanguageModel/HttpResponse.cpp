#include "LanguageModel/HttpResponse.h"

#include "Base/Error.h"

#include <algorithm>

namespace talmo {

namespace {

[[noreturn]] void refuse()
{
    throw Error(QStringLiteral("The model server's response is not valid HTTP."));
}

[[noreturn]] void refuseSize()
{
    throw Error(QStringLiteral("The model server's response is too large."));
}

/// Digits only: no sign, no blanks, nothing that a lenient parser would skip.
std::optional<qsizetype> wholeNumber(const QByteArray &digits, int base)
{
    const auto isDigit = [base](char character) {
        return (character >= '0' && character <= '9') ||
               (base > 10 && ((character >= 'a' && character <= 'f') || (character >= 'A' && character <= 'F')));
    };
    bool isNumber = false;
    const qlonglong number = digits.toLongLong(&isNumber, base);
    return isNumber && std::all_of(digits.begin(), digits.end(), isDigit) ? std::optional<qsizetype>(number)
                                                                          : std::nullopt;
}

} // namespace

void HttpResponse::take(const QByteArray &bytes)
{
    if (isWhole()) {
        return;
    }
    m_pending += bytes;
    while (!isWhole() && advance()) {
    }
}

void HttpResponse::takeEnd()
{
    if (m_stage == Stage::BodyUntilEnd) {
        m_stage = Stage::Whole;
    }
    if (!isWhole()) {
        throw Error(QStringLiteral("The model server closed the connection before its response was complete."));
    }
}

/// Consumes one line, or one piece of the body. False if more bytes are needed first.
bool HttpResponse::advance()
{
    if (m_stage == Stage::Body || m_stage == Stage::BodyUntilEnd || m_stage == Stage::Chunk) {
        return takeBody();
    }
    const auto line = takeLine();
    if (!line) {
        return false;
    }
    switch (m_stage) {
    case Stage::StatusLine:
        takeStatusLine(*line);
        break;
    case Stage::Headers:
        line->isEmpty() ? endHead() : takeHeader(*line);
        break;
    case Stage::ChunkSize:
        takeChunkSize(*line);
        break;
    case Stage::ChunkEnd:
        if (!line->isEmpty()) {
            refuse();
        }
        m_stage = Stage::ChunkSize;
        break;
    default: // Trailers are ignored.
        m_stage = line->isEmpty() ? Stage::Whole : Stage::Trailers;
        break;
    }
    return true;
}

std::optional<QByteArray> HttpResponse::takeLine()
{
    const auto end = m_pending.indexOf('\n');
    const auto size = end < 0 ? m_pending.size() : end + 1;
    // A long body may have as many bytes of framing: an endless one in chunks of a byte would cost seconds to reject.
    if (m_lineBytes + size > largestHead + m_body.size()) {
        refuseSize();
    }
    if (end < 0) {
        return std::nullopt;
    }
    m_lineBytes += size;
    QByteArray line = m_pending.left(end);
    m_pending.remove(0, size);
    if (line.endsWith('\r')) {
        line.chop(1);
    }
    return line;
}

void HttpResponse::takeStatusLine(const QByteArray &line)
{
    constexpr qsizetype statusAt = 9; // After "HTTP/1.1 ".
    constexpr qsizetype statusSize = 3;
    const auto status = wholeNumber(line.mid(statusAt, statusSize), 10);
    const bool isStatusLine = (line.startsWith("HTTP/1.1 ") || line.startsWith("HTTP/1.0 ")) && status &&
                              *status >= 100 &&
                              (line.size() == statusAt + statusSize || line[statusAt + statusSize] == ' ');
    if (!isStatusLine) {
        refuse();
    }
    m_status = static_cast<int>(*status);
    m_stage = Stage::Headers;
}

void HttpResponse::takeHeader(const QByteArray &line)
{
    const auto colon = line.indexOf(':');
    if (colon <= 0) {
        refuse();
    }
    const QByteArray name = line.left(colon).toLower();
    const QByteArray value = line.mid(colon + 1).trimmed();
    if (name == "content-length") {
        const auto length = wholeNumber(value, 10);
        if (!length || (m_length && m_length != length)) {
            refuse();
        }
        m_length = length;
    } else if (name == "transfer-encoding") {
        if (value.toLower() != "chunked") {
            refuse();
        }
        m_isChunked = true;
    } else if (name == "content-encoding" && value.toLower() != "identity") {
        refuse(); // Not requested, and a small body could expand to a huge one.
    }
}

void HttpResponse::endHead()
{
    constexpr int firstFinalStatus = 200;
    constexpr int noContent = 204;
    constexpr int notModified = 304;
    if (m_status < firstFinalStatus) {
        m_stage = Stage::StatusLine; // An interim response; the final one follows.
        m_length.reset();
        m_isChunked = false;
    } else if (m_status == noContent || m_status == notModified) {
        m_stage = Stage::Whole;
    } else if (m_isChunked) {
        m_stage = Stage::ChunkSize;
    } else if (!m_length) {
        m_stage = Stage::BodyUntilEnd;
        m_missing = largestBody + 1;
    } else if (*m_length > largestBody) {
        refuseSize();
    } else {
        m_missing = *m_length;
        m_stage = m_missing == 0 ? Stage::Whole : Stage::Body;
    }
}

void HttpResponse::takeChunkSize(const QByteArray &line)
{
    const auto size = wholeNumber(line.left(line.indexOf(';') < 0 ? line.size() : line.indexOf(';')).trimmed(), 16);
    if (!size) {
        refuse();
    }
    if (*size > largestBody) {
        refuseSize();
    }
    m_missing = *size;
    m_stage = m_missing == 0 ? Stage::Trailers : Stage::Chunk;
}

bool HttpResponse::takeBody()
{
    const auto size = std::min(m_missing, m_pending.size());
    append(m_pending.left(size));
    m_pending.remove(0, size);
    m_missing -= size;
    if (m_missing == 0) {
        m_stage = m_stage == Stage::Chunk ? Stage::ChunkEnd : Stage::Whole;
    }
    return size > 0;
}

void HttpResponse::append(const QByteArray &bytes)
{
    if (m_body.size() + bytes.size() > largestBody) {
        refuseSize();
    }
    m_body += bytes;
}

} // namespace talmo
