#pragma once

#include <QByteArray>
#include <QString>

namespace talmo {

/// The answer to a chat request while it arrives: server-sent events, or one JSON object from a server that does not
/// stream. Does no I/O. Holds no more than it is given; malformed input throws Error.
class AnswerStream {
public:
    enum class Progress {
        None,     ///< No generated text.
        Advanced, ///< At least one token, be it of the model's reasoning.
        Complete, ///< The end of the answer; whatever follows is not part of it.
    };

    /// Takes the next bytes of the body, in pieces of any size.
    Progress take(const QByteArray &bytes);

    /// The answer's text, once all bytes have been taken. Throws Error if it is incomplete or was cut off.
    QString text();

private:
    enum class Kind { Unknown, Events, Object };

    Progress takeEvents(const QByteArray &bytes);
    Progress takeLine(QByteArray line);
    Progress endEvent();
    Progress takeDelta(const QByteArray &data);

    Kind m_kind = Kind::Unknown;
    QByteArray m_object;
    QByteArray m_line; ///< The beginning of a line.
    QByteArray m_data; ///< The data of the current event.
    QString m_text;
    bool m_isFinished = false; ///< The model has ended its answer.
    bool m_isCut = false;
};

} // namespace talmo
