#include "WaylandDesktop.h"

#include "SettingsFile.h"

#include "Base/Error.h"
#include "DesktopParts.h"
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

QStringList clipboardOptions(const QString &type, const QString &selection)
{
    QStringList options = {QStringLiteral("--type"), type};
    if (selection == QLatin1String("primary")) {
        options.append(QStringLiteral("--primary"));
    }
    return options;
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
    : m_environment(privateEnvironment(m_folder.path()))
{
    const auto privately = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QFile::setPermissions(m_folder.path(), privately | QFile::ExeGroup | QFile::ExeOther);
    const QString forCompositor = m_folder.filePath(QStringLiteral("compositor"));
    QDir(m_folder.path()).mkpath(QStringLiteral("compositor"));
    QFile::setPermissions(forCompositor, privately);
    if (geteuid() == 0 && chown(QFile::encodeName(forCompositor).constData(), compositorUser, compositorUser) != 0) {
        throw Error(QStringLiteral("Cannot give a folder to the compositor's user"));
    }
    m_environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("wayland"));
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

QByteArray WaylandDesktop::ask(const QStringList &arguments)
{
    return outputOf(m_environment, QStringLiteral("swaymsg"), arguments);
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
    return QImage::fromData(outputOf(m_environment, QStringLiteral("grim"),
                                     {QStringLiteral("-t"), QStringLiteral("ppm"), QStringLiteral("-")}));
}

void WaylandDesktop::copy(const QByteArray &text, const QString &type, const QString &selection)
{
    wlCopy(m_environment, text, clipboardOptions(type, selection));
}

QByteArray WaylandDesktop::paste(const QString &type, const QString &selection)
{
    return wlPaste(m_environment, clipboardOptions(type, selection));
}

QList<QByteArray> WaylandDesktop::offeredTypes()
{
    auto types = outputOf(m_environment, QStringLiteral("wl-paste"), {QStringLiteral("--list-types")}).split('\n');
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
