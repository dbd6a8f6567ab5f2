#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace talmo::accuracy {

/// A recording of speech and its expected text.
struct Utterance {
    QString file;
    QString text;
    /// For the custom vocabulary: the word that must be spelled exactly like this. Else empty.
    QString keyword;
};

/// What one person said into one microphone, in this order.
struct Session {
    QString speaker;
    std::vector<Utterance> utterances;
};

/// One half is for tuning, the other for reports: every second sentence.
enum class Half { Tuning, Report, Both };

/// The phrases that act as commands wherever they occur in a text.
QStringList commandPhrases();

/// A list of sentences, spoken by each voice. Synthesis takes a while the first time; `folder` caches it.
std::vector<Session> spoken(const QString &list, const QStringList &voices, Half half, const QString &folder);

/// Recordings of real people from Debian's packages; empty if the packages are not installed.
std::vector<Session> recorded(Half half, const QString &folder);

/// The same sessions with different sound: `change` takes each file and returns the changed one.
template <typename Change>
std::vector<Session> changed(std::vector<Session> sessions, Change change)
{
    for (auto &session : sessions) {
        for (auto &utterance : session.utterances) {
            utterance.file = change(utterance.file);
        }
    }
    return sessions;
}

} // namespace talmo::accuracy
