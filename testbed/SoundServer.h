#pragma once

#include "ChildProcess.h"

#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace talmo::testbed {

/// A private sound server whose default microphone hears what is played into it.
class SoundServer {
public:
    /// `folder` is private to the server. Sets PULSE_SERVER for this process and adds it to `environment`. Throws
    /// Error.
    SoundServer(const QString &folder, QProcessEnvironment &environment);
    ~SoundServer();
    SoundServer(const SoundServer &) = delete;
    SoundServer &operator=(const SoundServer &) = delete;

    /// Plays a file into the microphone to its end. Throws Error.
    void play(const QString &wavFile);
    /// Begins to play it and returns.
    std::unique_ptr<ChildProcess> startPlaying(const QString &wavFile);
    /// Takes the microphone away: the server then has none.
    void removeMicrophone();
    /// `options` are those of module-remap-source, such as "rate=8000".
    void addMicrophone(const QStringList &options = {});
    void muteMicrophone(bool isMuted);
    /// Makes another source the default one, as the desktop's mixer would; it hears the same.
    void switchMicrophone();
    void killServer();
    /// After killServer().
    void restartServer();
    /// Has the server listen on a loopback port too, where it lets only those in who know its secret; gives back the
    /// address for PULSE_SERVER.
    QString listenToStrangers();
    /// The server stops answering, and goes on when told so.
    void freeze();
    void thaw();

private:
    void startServer();
    QString control(const QStringList &arguments);

    QString m_folder;
    QProcessEnvironment m_environment;
    QString m_microphoneModule;
    std::unique_ptr<ChildProcess> m_server;
};

} // namespace talmo::testbed
