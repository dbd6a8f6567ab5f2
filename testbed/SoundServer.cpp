#include "SoundServer.h"

#include "Base/Error.h"

#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QTcpServer>

#include <csignal>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

} // namespace

SoundServer::SoundServer(const QString &folder, QProcessEnvironment &environment)
    : m_folder(folder)
{
    QDir(folder).mkpath(QStringLiteral("."));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString address = QStringLiteral("unix:%1/native").arg(folder);
    environment.insert(QStringLiteral("PULSE_SERVER"), address);
    qputenv("PULSE_SERVER", QFile::encodeName(address));
    m_environment = environment;
    startServer();
}

SoundServer::~SoundServer() = default;

void SoundServer::startServer()
{
    auto environment = m_environment;
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("PULSE_SERVER"));
    // An idle null sink renders in blocks of up to two seconds unless rewinding is disabled.
    const QStringList arguments = {
        QStringLiteral("--daemonize=no"),
        QStringLiteral("--exit-idle-time=-1"),
        QStringLiteral("--use-pid-file=no"),
        QStringLiteral("-n"),
        QStringLiteral("--realtime=no"),
        QStringLiteral("--log-target=stderr"),
        QStringLiteral("--log-level=notice"),
        QStringLiteral("-L"),
        QStringLiteral("module-native-protocol-unix socket=%1/native auth-anonymous=1").arg(m_folder),
        QStringLiteral("-L"),
        QStringLiteral("module-null-sink sink_name=speech rate=48000 channels=2 format=float32le norewinds=1")};
    m_server = std::make_unique<ChildProcess>(QStringLiteral("pulseaudio"), arguments, environment);
    const bool isUp =
        pollUntil([this] { return !control({QStringLiteral("info")}).isEmpty() || !m_server->isRunning(); }, 20s);
    if (!isUp || !m_server->isRunning()) {
        throw Error(QStringLiteral("pulseaudio did not start: ") + m_server->output());
    }
    addMicrophone();
}

QString SoundServer::control(const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral("pactl"), arguments);
    const bool hasEnded = process.waitForFinished(5000);
    return hasEnded && process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()).trimmed()
                                               : QString();
}

void SoundServer::addMicrophone(const QStringList &options)
{
    m_microphoneModule =
        control(QStringList{QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
                            QStringLiteral("master=speech.monitor"), QStringLiteral("source_name=mic")} +
                options);
    control({QStringLiteral("set-default-source"), QStringLiteral("mic")});
    if (m_microphoneModule.isEmpty()) {
        throw Error(QStringLiteral("The sound server did not create a microphone: ") + m_server->output());
    }
}

void SoundServer::removeMicrophone()
{
    control({QStringLiteral("unload-module"), m_microphoneModule});
}

void SoundServer::muteMicrophone(bool isMuted)
{
    control({QStringLiteral("set-source-mute"), QStringLiteral("mic"), QString::number(isMuted ? 1 : 0)});
}

void SoundServer::addNamedMicrophone(const QString &name, const QString &title, bool isSilent)
{
    QStringList arguments{QStringLiteral("load-module")};
    if (isSilent) {
        arguments << QStringLiteral("module-null-source") << QStringLiteral("source_name=") + name
                  << QStringLiteral("description=\"%1\"").arg(title);
    } else {
        arguments << QStringLiteral("module-remap-source") << QStringLiteral("master=speech.monitor")
                  << QStringLiteral("source_name=") + name
                  << QStringLiteral("source_properties='device.description=\"%1\"'").arg(title);
    }
    const QString module = control(arguments);
    if (module.isEmpty()) {
        throw Error(QStringLiteral("The sound server did not create a microphone: ") + m_server->output());
    }
    m_namedModules.insert(name, module);
}

void SoundServer::removeNamedMicrophone(const QString &name)
{
    control({QStringLiteral("unload-module"), m_namedModules.take(name)});
}

void SoundServer::makeDefault(const QString &name)
{
    control({QStringLiteral("set-default-source"), name});
}

QStringList SoundServer::recordingNumbers()
{
    QStringList numbers;
    const QString list = control({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("source-outputs")});
    for (const auto &line : list.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        // The remapped microphones read from their master; those have no client.
        if (line.section(QLatin1Char('\t'), 2, 2) != QStringLiteral("-")) {
            numbers.append(line.section(QLatin1Char('\t'), 0, 0));
        }
    }
    return numbers;
}

int SoundServer::recordings()
{
    return static_cast<int>(recordingNumbers().size());
}

bool SoundServer::moveRecording(const QString &toName)
{
    const auto numbers = recordingNumbers();
    if (numbers.size() != 1) {
        return false;
    }
    control({QStringLiteral("move-source-output"), numbers.first(), toName});
    return true;
}

void SoundServer::switchMicrophone()
{
    control({QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
             QStringLiteral("master=speech.monitor"), QStringLiteral("source_name=other")});
    control({QStringLiteral("set-default-source"), QStringLiteral("other")});
}

std::unique_ptr<ChildProcess> SoundServer::startPlaying(const QString &wavFile)
{
    return std::make_unique<ChildProcess>(
        QStringLiteral("paplay"),
        QStringList{QStringLiteral("--device=speech"), QStringLiteral("--latency-msec=20"), wavFile}, m_environment);
}

void SoundServer::play(const QString &wavFile)
{
    const auto player = startPlaying(wavFile);
    waitUntil([&player] { return !player->isRunning(); }, 60s);
    if (player->terminate() != 0) {
        throw Error(QStringLiteral("Cannot play the speech: ") + player->output());
    }
}

QString SoundServer::listenToStrangers()
{
    // Lets the kernel pick a free port, since the server cannot be asked which one it uses.
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    const int port = probe.serverPort();
    probe.close();
    const QString module = control({QStringLiteral("load-module"), QStringLiteral("module-native-protocol-tcp"),
                                    QStringLiteral("listen=127.0.0.1"), QStringLiteral("port=%1").arg(port)});
    if (module.isEmpty()) {
        throw Error(QStringLiteral("The sound server is not listening: ") + m_server->output());
    }
    return QStringLiteral("tcp:127.0.0.1:%1").arg(port);
}

void SoundServer::killServer()
{
    m_server->kill();
}

void SoundServer::restartServer()
{
    QFile::remove(m_folder + QStringLiteral("/native"));
    startServer();
}

void SoundServer::freeze()
{
    ::kill(static_cast<pid_t>(m_server->processId()), SIGSTOP);
}

void SoundServer::thaw()
{
    ::kill(static_cast<pid_t>(m_server->processId()), SIGCONT);
}

} // namespace talmo::testbed
