#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace talmo {

/// Normalises a model's output for the steps that follow.
///
/// Some models punctuate by themselves, spoken commands included: "milk, new line, eggs" would leave a comma at the
/// beginning of a line, so the marks around a command are removed, except for the end of a sentence before it.
/// Everything else stays as the model wrote it.
QString normaliseTranscript(const QString &text);

/// Spells the words of the custom vocabulary as the user does.
class PersonalSpelling {
public:
    explicit PersonalSpelling(const QStringList &words);

    QString applied(QString text) const;

    /// The words as they are spoken, in lower case: "cloud formation" for "CloudFormation".
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
