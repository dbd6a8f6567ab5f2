#pragma once

#include <QString>

namespace talmo::accuracy {

/// What was recognised in a recording, and what it would have taken while it was spoken.
struct PacedTranscript {
    QString text;
    /// In seconds, from the last sound to the text.
    double wait = 0;
    /// In seconds of one core.
    double processing = 0;
    /// Of the recording, in seconds.
    double length = 0;
};

/// Tells how long a recogniser would keep its user waiting that is given a recording faster than it was spoken. Counts
/// the processor time of this process in place of time, so that other programs do not count: as if every block of
/// sound had come when it was spoken, to a machine with nothing else to do.
class Pace {
public:
    Pace();

    /// The recogniser has done what it does with the next so many seconds of sound.
    void tookSound(double seconds);
    /// The recogniser has finished.
    PacedTranscript finished(const QString &text);

private:
    double sinceLastCall();

    double m_before;
    PacedTranscript m_transcript;
    /// When the recogniser is done with what it has heard, in seconds from the beginning.
    double m_done = 0;
};

} // namespace talmo::accuracy
