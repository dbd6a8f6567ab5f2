#pragma once

#include <QByteArray>
#include <QString>

namespace talmo {

/// The list of a model's tokens: on each line a token and its number.
class SherpaTokens {
public:
    /// Whether a model needs a token that stands for no sound.
    enum class Blank { Needed, NotNeeded };

    /// The library aborts on lines of any other form. Throws Error.
    static SherpaTokens read(const QString &path, Blank blank);

    const QByteArray &content() const { return m_content; }
    /// The token of a line.
    static QByteArray tokenOf(const QByteArray &line);
    /// Whether a token is a piece of a word, and not a mark such as "<blk>" or "#0".
    static bool isPiece(const QByteArray &token);
    /// Whether the model can only write capitals: it has letters, and none of them is lower case.
    bool areAllCapitals() const;

private:
    explicit SherpaTokens(QByteArray content);

    QByteArray m_content;
};

} // namespace talmo
