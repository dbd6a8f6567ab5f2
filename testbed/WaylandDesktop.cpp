#include "WaylandDesktop.h"

#include "SettingsFile.h"

#include "Base/Error.h"
#include "Platform/Linux/Wayland/Keys/VirtualKeyboard.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <csignal>

#include <unistd.h>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

/// sway refuses to run as root, and XWayland admits only users that have a name: "nobody" on every Debian.
constexpr uid_t compositorUser = 65534;
constexpr Timeout startTime = 20s;
constexpr int programTime = 10000; // Milliseconds.

QJsonObject focused(const QJsonObject &node)
{
    if (node.value(QStringLiteral("focused")).toBool()) {
        return node;
    }
    for (const auto &list : {QStringLiteral("nodes"), QStringLiteral("floating_nodes")}) {
        for (const auto &child : node.value(list).toArray()) {
            const auto found = focused(child.toObject());
            if (!found.isEmpty()) {
                return found;
            }
        }
    }
    return {};
}

} // namespace

bool WaylandDesktop::isInstalled()
{
    for (const auto *program : {"sway", "Xwayland", "wl-copy", "grim", "setpriv"}) {
        if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty()) {
            return false;
        }
    }
    return true;
}

WaylandDesktop::WaylandDesktop()
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const auto &name : {"run", "config", "state", "cache", "data", "compositor"}) {
        QDir(m_folder.path()).mkpath(QString::fromLatin1(name));
    }
    const auto privately = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QFile::setPermissions(m_folder.path(), privately | QFile::ExeGroup | QFile::ExeOther);
    QFile::setPermissions(m_folder.filePath(QStringLiteral("run")), privately);
    const QString forCompositor = m_folder.filePath(QStringLiteral("compositor"));
    QFile::setPermissions(forCompositor, privately);
    if (geteuid() == 0 && chown(QFile::encodeName(forCompositor).constData(), compositorUser, compositorUser) != 0) {
        throw Error(QStringLiteral("Cannot give a folder to the compositor's user"));
    }
    const std::pair<const char *, QString> variables[] = {
        {"HOME", m_folder.path()},
        {"XDG_RUNTIME_DIR", m_folder.filePath(QStringLiteral("run"))},
        {"XDG_CONFIG_HOME", m_folder.filePath(QStringLiteral("config"))},
        {"XDG_STATE_HOME", m_folder.filePath(QStringLiteral("state"))},
        {"XDG_CACHE_HOME", m_folder.filePath(QStringLiteral("cache"))},
        {"XDG_DATA_HOME", m_folder.filePath(QStringLiteral("data"))},
        {"DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=%1/bus").arg(m_folder.filePath(QStringLiteral("run")))},
        {"LANG", QStringLiteral("C.UTF-8")},
        {"LC_ALL", QStringLiteral("C.UTF-8")},
        {"GDK_BACKEND", QStringLiteral("wayland")},
        {"NO_AT_BRIDGE", QStringLiteral("1")},
        {"QT_FORCE_STDERR_LOGGING", QStringLiteral("1")},
    };
    for (const auto &[name, value] : variables) {
        m_environment.insert(QString::fromLatin1(name), value);
    }
    m_environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    storeSettings({{QStringLiteral("linux.languageModelAddress"), QStringLiteral("off")}});
    startCompositor();
    m_session = WaylandSession::open();
    if (!m_session) {
        throw Error(QStringLiteral("sway does not respond: ") + m_compositor->output());
    }
    m_session->executor().call([this] { m_keyboard = VirtualKeyboard::open(*m_session); }).waitForFinished();
    press(KeyboardKey::RightControl); // The first key of a keyboard is lost on a seat that had none.
    release(KeyboardKey::RightControl);
}

WaylandDesktop::~WaylandDesktop()
{
    if (m_session) {
        m_session->executor().call([this] { m_keyboard.reset(); }).waitForFinished();
    }
    m_session.reset();
    m_compositor.reset();
    for (const auto &[name, value] : m_previous) {
        qputenv(name.constData(), value);
    }
}

void WaylandDesktop::startCompositor()
{
    const QString folder = m_folder.filePath(QStringLiteral("compositor"));
    const QString configuration = m_folder.filePath(QStringLiteral("sway.conf"));
    QFile file(configuration);
    if (!file.open(QFile::WriteOnly)) {
        throw Error(QStringLiteral("Cannot write sway's configuration"));
    }
    // The X server belongs to the compositor's user; Talmo and the other programs run as the user of the tests.
    file.write("output * resolution 1024x640\nxwayland force\n"
               "exec xhost +si:localuser:root >&2 && echo \"sway-is-ready $WAYLAND_DISPLAY $SWAYSOCK $DISPLAY\"\n");
    file.close();
    QProcessEnvironment environment;
    for (const auto &[name, value] : {std::pair("PATH", "/usr/bin:/bin"), std::pair("WLR_BACKENDS", "headless"),
                                      std::pair("WLR_RENDERER", "pixman"), std::pair("WLR_LIBINPUT_NO_DEVICES", "1")}) {
        environment.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    }
    environment.insert(QStringLiteral("HOME"), folder);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder);
    QStringList command = {QStringLiteral("sway"), QStringLiteral("-c"), configuration};
    if (geteuid() == 0) {
        const QString user = QString::number(compositorUser);
        command = QStringList{QStringLiteral("setpriv"),
                              QStringLiteral("--reuid"),
                              user,
                              QStringLiteral("--regid"),
                              user,
                              QStringLiteral("--clear-groups"),
                              QStringLiteral("--pdeathsig"),
                              QStringLiteral("KILL")} +
                  command;
    }
    m_compositor = std::make_unique<ChildProcess>(command.takeFirst(), command, environment);
    const auto ready = m_compositor->waitForLine(QStringLiteral("sway-is-ready"), startTime);
    if (!ready) {
        throw Error(QStringLiteral("sway did not start: ") + m_compositor->output());
    }
    const auto words = ready->text.mid(ready->text.indexOf(QLatin1String("sway-is-ready"))).split(QLatin1Char(' '));
    const std::pair<const char *, QString> variables[] = {
        {"WAYLAND_DISPLAY", folder + QLatin1Char('/') + words.value(1)},
        {"SWAYSOCK", words.value(2)},
        {"DISPLAY", words.value(3)}};
    for (const auto &[name, value] : variables) {
        m_environment.insert(QString::fromLatin1(name), value);
        m_previous.emplace_back(name, qgetenv(name));
        qputenv(name, value.toUtf8());
    }
}

void WaylandDesktop::storeSettings(QJsonObject settings)
{
    // This desktop's keyboard is none of the machine's, which may be readable.
    settings.insert(QStringLiteral("linux.readKeyboards"), false);
    writeTalmoSettings(m_folder.path(), settings);
}

void WaylandDesktop::sendKey(KeyboardKey key, bool isDown)
{
    m_session->executor()
        .call([this, key, isDown] {
            m_keyboard->sendKey(static_cast<quint32>(key), isDown);
            m_session->synchronise();
        })
        .waitForFinished();
}

QByteArray WaylandDesktop::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    waitUntil([&process] { return process.state() == QProcess::NotRunning; }, Timeout(programTime));
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

QByteArray WaylandDesktop::ask(const QStringList &arguments)
{
    return run(QStringLiteral("swaymsg"), arguments);
}

QString WaylandDesktop::activeWindowTitle()
{
    const auto tree =
        QJsonDocument::fromJson(ask({QStringLiteral("--raw"), QStringLiteral("-t"), QStringLiteral("get_tree")}));
    const auto node = focused(tree.object());
    return node.value(QStringLiteral("pid")).isUndefined() ? QString() : node.value(QStringLiteral("name")).toString();
}

bool WaylandDesktop::waitForActiveWindow(const QString &title, Timeout timeout)
{
    return pollUntil([&] { return activeWindowTitle().contains(title); }, timeout);
}

QImage WaylandDesktop::screenshot()
{
    return QImage::fromData(
        run(QStringLiteral("grim"), {QStringLiteral("-t"), QStringLiteral("ppm"), QStringLiteral("-")}));
}

void WaylandDesktop::copy(const QByteArray &text, const QString &type, const QString &selection)
{
    QStringList arguments = {QStringLiteral("--type"), type};
    if (selection == QLatin1String("primary")) {
        arguments.append(QStringLiteral("--primary"));
    }
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("wl-copy"), arguments);
    process.write(text);
    process.closeWriteChannel();
    waitUntil([&process] { return process.state() == QProcess::NotRunning; }, Timeout(programTime));
    if (!pollUntil([&] { return paste(type, selection) == text; }, Timeout(programTime))) {
        throw Error(QStringLiteral("wl-copy did not copy"));
    }
}

QByteArray WaylandDesktop::paste(const QString &type, const QString &selection)
{
    QStringList arguments = {QStringLiteral("--no-newline"), QStringLiteral("--type"), type};
    if (selection == QLatin1String("primary")) {
        arguments.append(QStringLiteral("--primary"));
    }
    return run(QStringLiteral("wl-paste"), arguments);
}

QList<QByteArray> WaylandDesktop::offeredTypes()
{
    auto types = run(QStringLiteral("wl-paste"), {QStringLiteral("--list-types")}).split('\n');
    types.removeAll({});
    return types;
}

void WaylandDesktop::freezeCompositor()
{
    ::kill(static_cast<pid_t>(m_compositor->processId()), SIGSTOP);
}

void WaylandDesktop::thawCompositor()
{
    ::kill(static_cast<pid_t>(m_compositor->processId()), SIGCONT);
}

} // namespace talmo::testbed
