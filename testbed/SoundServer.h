#pragma once

#include "ChildProcess.h"

#include <QMap>
#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace talmo::testbed {

/// A private sound server whose default microphone records what is played into it.
class SoundServer {
public:
    /// `folder` is private to the server. Sets PULSE_SERVER in this process and in `environment`. Throws Error.
    SoundServer(const QString &folder, QProcessEnvironment &environment);
    ~SoundServer();
    SoundServer(const SoundServer &) = delete;
    SoundServer &operator=(const SoundServer &) = delete;

    /// Plays a file into the microphone and waits for its end. Throws Error.
    void play(const QString &wavFile);
    /// Starts playing and returns.
    std::unique_ptr<ChildProcess> startPlaying(const QString &wavFile);
    /// Removes the microphone; the server then has none.
    void removeMicrophone();
    /// `options` are those of module-remap-source, such as "rate=8000".
    void addMicrophone(const QStringList &options = {});
    void muteMicrophone(bool isMuted);
    /// A further microphone, which gives silence, or else the same sound as the first.
    void addNamedMicrophone(const QString &name, const QString &title, bool isSilent = false);
    void removeNamedMicrophone(const QString &name);
    void makeDefault(const QString &name);
    /// Moves the recording under way, as the desktop's mixer does. False if there is not exactly one.
    bool moveRecording(const QString &toName);
    int recordings();
    /// Makes another source the default one, as the desktop's mixer would; it records the same sound.
    void switchMicrophone();
    void killServer();
    /// Call after killServer().
    void restartServer();
    /// Makes the server listen on a loopback port too, where it accepts only clients that know its secret; returns the
    /// address for PULSE_SERVER.
    QString listenToStrangers();
    /// The server stops responding until it is told to continue.
    void freeze();
    void thaw();

private:
    void startServer();
    QString control(const QStringList &arguments);
    QStringList recordingNumbers();

    QString m_folder;
    QProcessEnvironment m_environment;
    QString m_microphoneModule;
    QMap<QString, QString> m_namedModules;
    std::unique_ptr<ChildProcess> m_server;
};

} // namespace talmo::testbed
