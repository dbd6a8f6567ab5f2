#pragma once

#include <QString>

namespace talmo {

/// What a recording, or the attempt at one, has shown about the microphone.
struct MicrophoneReport {
    enum class Finding { Fine, NoServer, OnlySilence, Unplugged };

    Finding finding = Finding::Fine;
    /// As the desktop's mixer calls it.
    QString microphone;

    /// What is wrong and what to do, untranslated; empty if nothing is wrong.
    QString message() const;
};

/// Reports on the last recording. Any thread.
class MicrophoneReporter {
public:
    virtual ~MicrophoneReporter() = default;
    virtual MicrophoneReport report() const = 0;
};

} // namespace talmo
