#pragma once

#include "Recognition/FileTranscription.h"
#include "Recognition/Recognisers.h"
#include "SoundServer.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo::accuracy {

struct ListenerOptions {
    /// "embedded", or the name of an installed model.
    QString engine;
    /// Personal words, as they are spelled.
    QStringList words;
    /// Into whose microphone the files are played; null to read them instead, which is faster than speaking.
    std::shared_ptr<testbed::SoundServer> sound;
};

/// A Talmo that has just been started and knows no microphone, as far as recognising goes.
class Listener {
public:
    /// Throws Error when the engine is not there.
    explicit Listener(const ListenerOptions &options);

    /// What is recognised of a sound file. Throws Error.
    FileTranscript hear(const QString &file);

private:
    QCoro::Task<FileTranscript> hearPlayed(QString file);

    std::shared_ptr<testbed::SoundServer> m_sound;
    std::shared_ptr<SerialExecutor> m_recogniser;
    Recognisers m_recognisers;
    std::shared_ptr<SpeechTranscriptionService> m_service;
};

} // namespace talmo::accuracy
