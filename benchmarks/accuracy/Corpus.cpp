#include "accuracy/Corpus.h"

#include "Base/Error.h"
#include "Cleanup/LocalFormatting.h"
#include "SpokenText.h"
#include "accuracy/SoundFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace talmo::accuracy {

namespace {

bool isIn(Half half, int index)
{
    return half == Half::Both || (index % 2 == 0) == (half == Half::Tuning);
}

QStringList lines(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        return {};
    }
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// People pause around a command.
QString withPauses(QString text)
{
    static const QRegularExpression command(
        QStringLiteral(" ?\\b(%1)\\b ?").arg(commandPhrases().join(QLatin1Char('|'))));
    text.replace(command, QStringLiteral(", \\1, "));
    static const QRegularExpression outside(QStringLiteral("^[, ]+|[, ]+$"));
    return text.remove(outside);
}

void addIfThere(Session &session, const QString &file, const QString &text)
{
    if (QFile::exists(file)) {
        session.utterances.push_back({file, text, {}});
    }
}

/// Parses lines such as "<s> words </s> (name)".
Session transcribed(const QString &speaker, const QString &folder, const QString &transcription, Half half)
{
    Session session{speaker, {}};
    static const QRegularExpression line(QStringLiteral("^(?:<s>)?(.*?)(?:</s>)?\\s*\\((\\S+)\\)$"));
    int index = 0;
    for (const auto &entry : lines(folder + QLatin1Char('/') + transcription)) {
        const auto match = line.match(entry.trimmed());
        if (match.hasMatch() && isIn(half, index++)) {
            addIfThere(session, folder + QLatin1Char('/') + match.captured(2) + QStringLiteral(".wav"),
                       match.captured(1).trimmed());
        }
    }
    return session;
}

Session channelNames(Half half)
{
    Session session{QStringLiteral("channels"), {}};
    int index = 0;
    for (const auto *name : {"Front_Center", "Front_Left", "Front_Right", "Rear_Center", "Rear_Left", "Rear_Right",
                             "Side_Left", "Side_Right"}) {
        if (isIn(half, index++)) {
            const QString file = QString::fromLatin1(name);
            addIfThere(session, QStringLiteral("/usr/share/sounds/alsa/%1.wav").arg(file),
                       QString(file).replace(QLatin1Char('_'), QLatin1Char(' ')).toLower());
        }
    }
    return session;
}

} // namespace

QStringList commandPhrases()
{
    QStringList phrases{QStringLiteral("new line"), QStringLiteral("new paragraph")};
    for (const auto phrase : bulletTriggerPhrases) {
        phrases.append(phrase.toString());
    }
    return phrases;
}

std::vector<Session> spoken(const QString &list, const QStringList &voices, Half half, const QString &folder)
{
    QDir().mkpath(folder);
    const auto texts = lines(QStringLiteral(TALMO_ACCURACY_TEXTS "/%1.txt").arg(list));
    std::vector<Session> sessions;
    for (const auto &voice : voices) {
        Session session{voice, {}};
        for (int index = 0; index < texts.size(); ++index) {
            if (isIn(half, index)) {
                const QStringList parts = texts.at(index).split(QLatin1Char('|'));
                const QString text = parts.last();
                session.utterances.push_back({testbed::speak(withPauses(text), folder, voice), text,
                                              parts.size() > 1 ? parts.first() : QString()});
            }
        }
        sessions.push_back(std::move(session));
    }
    return sessions;
}

std::vector<Session> recorded(Half half, const QString &folder)
{
    const QString data = QStringLiteral("/usr/share/pocketsphinx/test/data/");
    std::vector<Session> sessions{transcribed(QStringLiteral("librivox"), data + QStringLiteral("librivox"),
                                              QStringLiteral("transcription"), half),
                                  transcribed(QStringLiteral("cards"), data + QStringLiteral("cards"),
                                              QStringLiteral("cards.transcription"), half),
                                  channelNames(half)};
    Session raw{QStringLiteral("raw"), {}};
    if (half != Half::Tuning) {
        const QString forward = data + QStringLiteral("goforward.raw");
        if (QFile::exists(forward)) {
            addIfThere(raw, fromRaw(forward, folder), QStringLiteral("go forward ten meters"));
        }
    }
    sessions.push_back(std::move(raw));
    return sessions;
}

} // namespace talmo::accuracy
