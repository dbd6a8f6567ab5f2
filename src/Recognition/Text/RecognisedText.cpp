#include "Recognition/Text/RecognisedText.h"

#include "Cleanup/LocalFormatting.h"
#include "Recognition/Text/Pronunciation.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

QRegularExpression phrases(const QString &pattern, const QStringList &words)
{
    QStringList escaped;
    for (const auto &each : words) {
        escaped.append(QRegularExpression::escape(each));
    }
    return QRegularExpression(pattern.arg(escaped.join(QLatin1Char('|'))),
                              QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
}

QStringList listRequests()
{
    QStringList all;
    for (const auto phrase : bulletTriggerPhrases) {
        all.append(phrase.toString());
    }
    return all;
}

/// The spoken form of a word: "cloud formation" for "CloudFormation". If splitting would drop more than blanks, as for
/// "C++", the spelling itself.
QString spokenForm(const QString &word)
{
    const QStringList parts = spokenParts(word);
    const QString written = word.toLower().simplified();
    return parts.join(QString()).toLower() == QString(written).remove(QLatin1Char(' '))
               ? parts.join(QLatin1Char(' ')).toLower()
               : written;
}

} // namespace

QString normaliseTranscript(const QString &text)
{
    static const QRegularExpression commands = phrases(QStringLiteral("[,;:]?\\s*\\b(%1)\\b[,;:.!?]*\\s*"),
                                                       {QStringLiteral("new line"), QStringLiteral("new paragraph")});
    static const QRegularExpression requests =
        phrases(QStringLiteral("[,;:]?\\s*\\b(%1)\\b[,;:.!?]*(?=\\s|$)"), listRequests());
    QString result = text;
    result.replace(commands, QStringLiteral(" \\1 "));
    result.replace(requests, QStringLiteral(" \\1"));
    return result.trimmed();
}

PersonalSpelling::PersonalSpelling(const QStringList &words)
{
    for (const auto &word : words) {
        const QString spelled = word.simplified();
        const QString spoken = spokenForm(spelled);
        if (!spoken.isEmpty()) {
            m_words.append({spoken, spelled, phrases(QStringLiteral("(?<![\\w'])(?:%1)(?!\\w)"), {spoken, spelled})});
        }
    }
    // Longest first, or "Rust" would be found within "Rust Belt".
    std::sort(m_words.begin(), m_words.end(), [](const Word &left, const Word &right) {
        return std::pair(-left.spoken.size(), left.spoken) < std::pair(-right.spoken.size(), right.spoken);
    });
}

QString PersonalSpelling::applied(QString text) const
{
    for (const auto &word : m_words) {
        qsizetype from = 0;
        for (auto match = word.heard.match(text); match.hasMatch(); match = word.heard.match(text, from)) {
            text.replace(match.capturedStart(), match.capturedLength(), word.spelled);
            from = match.capturedStart() + word.spelled.size();
        }
    }
    return text;
}

QStringList PersonalSpelling::spokenForms() const
{
    QStringList forms;
    for (const auto &word : m_words) {
        forms.append(word.spoken);
    }
    return forms;
}

} // namespace talmo
