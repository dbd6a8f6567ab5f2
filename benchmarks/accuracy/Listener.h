#pragma once

#include "Recognition/FileTranscription.h"
#include "Recognition/Recognisers.h"
#include "SoundServer.h"
#include "accuracy/Pace.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo::accuracy {

struct ListenerOptions {
    /// "embedded", or the name of an installed model.
    QString engine;
    /// The custom vocabulary, in its exact spelling.
    QStringList words;
    /// The server whose microphone the files are played into; null to read the files instead, which is faster than real
    /// time.
    std::shared_ptr<testbed::SoundServer> sound;
};

/// The recognition side of a Talmo that has just been started and knows no microphone.
class Listener {
public:
    /// Throws Error if the engine is missing.
    explicit Listener(const ListenerOptions &options);

    /// The transcript of a sound file. Throws Error.
    FileTranscript hear(const QString &file);
    /// The same from the file, and what it would have taken while it was spoken. Throws Error.
    PacedTranscript hearPaced(const QString &file);

private:
    QCoro::Task<FileTranscript> hearInStep(QString file, std::shared_ptr<Pace> pace);
    QCoro::Task<FileTranscript> hearPlayed(QString file);

    std::shared_ptr<testbed::SoundServer> m_sound;
    std::shared_ptr<SerialExecutor> m_recogniser;
    Recognisers m_recognisers;
    std::shared_ptr<SpeechTranscriptionService> m_service;
};

} // namespace talmo::accuracy
