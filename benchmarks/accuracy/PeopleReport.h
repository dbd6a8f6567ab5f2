#pragma once

#include "accuracy/People.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace talmo::accuracy {

struct PeopleOptions {
    std::vector<PersonRecording> recordings;
    /// "embedded", or the name of an installed model. It is compared with PocketSphinx as Debian has it.
    QString engine;
    /// The custom vocabulary.
    QStringList words;
    bool showsErrors = false;
    /// A file for what was recognised, a line for each recording; none if empty.
    QString transcripts;
};

/// Recognises recordings of people, each as the first dictation of a new user through an unknown microphone, and prints
/// how many words were wrong, for which kinds of recordings, how long the end was waited for, and what it cost. Throws
/// Error.
void reportPeople(const PeopleOptions &options);

} // namespace talmo::accuracy
