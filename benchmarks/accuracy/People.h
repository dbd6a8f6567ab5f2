#pragma once

#include <QString>

#include <vector>

namespace talmo::accuracy {

/// A recording of a person, and what was said in it.
struct PersonRecording {
    QString file;
    QString speaker;
    /// What the recording is like, such as "clean"; results are also reported by kind.
    QString kind;
    QString transcript;
};

/// Describes the format that people() reads, for --help.
extern const char *const peopleFormat;

/// The recordings that the tables in a folder list, or one table, in its order. Throws Error.
std::vector<PersonRecording> people(const QString &path);

/// The same choice every time, from as many speakers as possible; all of them if there are no more.
std::vector<PersonRecording> sampleOf(const std::vector<PersonRecording> &recordings, int count);

} // namespace talmo::accuracy
