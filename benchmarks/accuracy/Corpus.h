#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace talmo::accuracy {

/// Something that was said, and what it should come out as.
struct Utterance {
    QString file;
    QString text;
    /// For personal words: the one that must be spelled exactly so. Else empty.
    QString keyword;
};

/// What one person said into one microphone, in this order.
struct Session {
    QString speaker;
    std::vector<Utterance> utterances;
};

/// Tuning looks at the one half, reports are about the other: every second sentence.
enum class Half { Tuning, Report, Both };

/// What acts wherever it is written.
QStringList commandPhrases();

/// A list of sentences, spoken by each voice. Speaking takes a while the first time; `folder` keeps it.
std::vector<Session> spoken(const QString &list, const QStringList &voices, Half half, const QString &folder);

/// Recordings of real people that Debian's packages hold; empty where the packages are not installed.
std::vector<Session> recorded(Half half, const QString &folder);

/// The same with other sound: `change` gets each file and gives back the changed one.
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
