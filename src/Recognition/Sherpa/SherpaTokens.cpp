#include "Recognition/Sherpa/SherpaTokens.h"

#include "Base/Error.h"
#include "Recognition/UnusableModel.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr qint64 largestFile = qint64(16) * 1024 * 1024;

qsizetype separatorIn(const QByteArray &line)
{
    return std::max(line.lastIndexOf(' '), line.lastIndexOf('\t'));
}

} // namespace

SherpaTokens::SherpaTokens(QByteArray content)
    : m_content(std::move(content))
{
}

SherpaTokens SherpaTokens::read(const QString &path, Blank blank)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly) || file.size() == 0 || file.size() > largestFile) {
        throw UnusableModel(QStringLiteral("%1 cannot be read.").arg(path));
    }
    SherpaTokens tokens(file.readAll());
    bool hasBlank = false;
    for (const auto &line : tokens.m_content.split('\n')) {
        bool isNumber = false;
        line.mid(separatorIn(line) + 1).trimmed().toInt(&isNumber);
        const QByteArray token = tokenOf(line);
        hasBlank = hasBlank || token == "<blk>" || token == "<eps>" || token == "<blank>";
        if (!line.trimmed().isEmpty() && (separatorIn(line) < 0 || !isNumber)) {
            throw UnusableModel(QStringLiteral("%1 is damaged: “%2”").arg(path, QString::fromUtf8(line.left(60))));
        }
    }
    if (blank == Blank::Needed && !hasBlank) {
        throw UnusableModel(QStringLiteral("%1 is not complete: it has no blank.").arg(path));
    }
    return tokens;
}

QByteArray SherpaTokens::tokenOf(const QByteArray &line)
{
    return line.left(separatorIn(line));
}

bool SherpaTokens::isPiece(const QByteArray &token)
{
    return !token.isEmpty() && !token.startsWith('<') && !token.startsWith('#');
}

bool SherpaTokens::areAllCapitals() const
{
    bool hasCapitals = false;
    for (const auto &line : m_content.split('\n')) {
        const QByteArray token = tokenOf(line);
        const QString text = isPiece(token) ? QString::fromUtf8(token) : QString();
        if (text != text.toUpper()) {
            return false;
        }
        hasCapitals = hasCapitals || text != text.toLower();
    }
    return hasCapitals;
}

} // namespace talmo
