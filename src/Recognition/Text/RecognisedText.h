#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace talmo {

/// What a model says, made fit for what comes behind it.
///
/// Some models know capitals only; shouted text is nobody's wish. Others punctuate by themselves, spoken commands
/// included: "milk, new line, eggs" would leave a comma at the beginning of a line, so the marks around a command go
/// with it, but for the end of a sentence before it. Everything else stays as the model wrote it.
QString tidied(const QString &text);

/// The user's own words as the user spells them, wherever they were heard.
class PersonalSpelling {
public:
    explicit PersonalSpelling(const QStringList &words);

    QString applied(QString text) const;

    /// The words as they are spoken, in small letters: "cloud formation" for "CloudFormation".
    QStringList spokenForms() const;

private:
    struct Word {
        QString spoken;
        QString spelled;
        QRegularExpression heard;
    };
    QList<Word> m_words;
};

} // namespace talmo
