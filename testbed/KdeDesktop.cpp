#include "KdeDesktop.h"

#include "DesktopParts.h"
#include "SettingsFile.h"

#include "Base/Error.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <array>
#include <thread>

#include <unistd.h>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

constexpr Timeout startTime = 30s;
constexpr int programTime = 10000; // Milliseconds.
constexpr QSize screen(1280, 800);
const QString kwin = QStringLiteral("kwin_wayland");

QByteArray allOf(int file)
{
    QByteArray bytes;
    std::array<char, 65536> part{};
    for (auto size = ::read(file, part.data(), part.size()); size > 0; size = ::read(file, part.data(), part.size())) {
        bytes.append(part.data(), size);
    }
    return bytes;
}

void write(const QString &path, const QString &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(text.toUtf8()) < 0) {
        throw Error(QStringLiteral("Cannot write ") + path);
    }
}

} // namespace

bool KdeDesktop::isPossible()
{
    for (const auto *program : {"kwin_wayland", "kbuildsycoca5", "Xwayland", "wl-copy", "dbus-daemon"}) {
        if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty()) {
            return false;
        }
    }
    return geteuid() != 0;
}

KdeDesktop::KdeDesktop(const QStringList &trusted)
    : m_environment(privateEnvironment(m_folder.path()))
{
    m_environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("KDE"));
    m_environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("wayland"));
    m_environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    storeSettings({{QStringLiteral("linux.languageModelAddress"), QStringLiteral("off")}});
    m_bus = startBus(m_environment);
    for (const auto &program : trusted) {
        trust(program);
    }
    outputOf(m_environment, QStringLiteral("kbuildsycoca5"),
             {}); // Before KWin starts, which looks for changes only now and then.
    startKWin();
}

KdeDesktop::~KdeDesktop()
{
    m_kwin.reset();
}

void KdeDesktop::startKWin()
{
    // A copy has no file capabilities, which containers may refuse to grant.
    const QString program = m_folder.filePath(kwin);
    const QString announce = m_folder.filePath(QStringLiteral("announce"));
    if (!QFile::copy(QStandardPaths::findExecutable(kwin), program)) {
        throw Error(QStringLiteral("Cannot copy kwin_wayland"));
    }
    write(announce, QStringLiteral("#!/bin/sh\necho \"kwin-is-ready $WAYLAND_DISPLAY $DISPLAY $XAUTHORITY\" >&2\n"));
    QFile::setPermissions(announce, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    auto environment = m_environment;
    // OpenGL in software, since only that can be photographed.
    environment.insert(QStringLiteral("KWIN_COMPOSE"), QStringLiteral("O2"));
    environment.insert(QStringLiteral("KWIN_FORCE_OWN_QPA"), QStringLiteral("1"));
    environment.insert(QStringLiteral("KWIN_SCREENSHOT_NO_PERMISSION_CHECKS"), QStringLiteral("1"));
    m_kwin = std::make_unique<ChildProcess>(
        program,
        QStringList{QStringLiteral("--virtual"), QStringLiteral("--width"), QString::number(screen.width()),
                    QStringLiteral("--height"), QString::number(screen.height()), QStringLiteral("--no-lockscreen"),
                    QStringLiteral("--xwayland"), QStringLiteral("--socket"), QStringLiteral("wayland-talmo"),
                    announce},
        environment);
    const auto ready = m_kwin->waitForLine(QStringLiteral("kwin-is-ready"), startTime);
    if (!ready) {
        throw Error(QStringLiteral("KWin did not start: ") + m_kwin->output());
    }
    const auto words = ready->text.mid(ready->text.indexOf(QLatin1String("kwin-is-ready"))).split(QLatin1Char(' '));
    m_environment.insert(QStringLiteral("WAYLAND_DISPLAY"), words.value(1));
    m_environment.insert(QStringLiteral("DISPLAY"), words.value(2));
    if (!words.value(3).isEmpty()) {
        m_environment.insert(QStringLiteral("XAUTHORITY"), words.value(3));
    }
}

void KdeDesktop::storeSettings(QJsonObject settings)
{
    settings.insert(QStringLiteral("linux.readKeyboards"), false); // Those are the machine's.
    writeTalmoSettings(m_folder.path(), settings);
}

void KdeDesktop::trust(const QString &program)
{
    write(m_folder.filePath(QStringLiteral("data/applications/trusted%1.desktop").arg(++m_trusted)),
          QStringLiteral("[Desktop Entry]\nType=Application\nName=Trusted\nExec=%1\nNoDisplay=true\n"
                         "X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input,org_kde_plasma_window_management\n")
              .arg(program));
}

QImage KdeDesktop::screenshot()
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        throw Error(QStringLiteral("Cannot make a pipe"));
    }
    const QString service = QStringLiteral("org.kde.KWin.ScreenShot2");
    auto call =
        QDBusMessage::createMethodCall(QStringLiteral("org.kde.KWin"), QStringLiteral("/org/kde/KWin/ScreenShot2"),
                                       service, QStringLiteral("CaptureActiveScreen"));
    call.setArguments({QVariantMap(), QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))});
    ::close(ends[1]);
    auto bus = QDBusConnection::connectToBus(m_environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")),
                                             QStringLiteral("screenshots"));
    QByteArray pixels;
    std::thread reader([&pixels, file = ends[0]] { pixels = allOf(file); });
    const auto reply = bus.call(call, QDBus::Block, programTime);
    call = {}; // Its copy of the pipe's end would keep the reader waiting.
    reader.join();
    ::close(ends[0]);
    const auto results = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    const QSize size(results.value(QStringLiteral("width")).toInt(), results.value(QStringLiteral("height")).toInt());
    const auto stride = results.value(QStringLiteral("stride")).toInt();
    if (size.isEmpty() || pixels.size() < qsizetype(stride) * size.height()) {
        throw Error(QStringLiteral("KWin made no picture: ") + reply.errorMessage());
    }
    return QImage(reinterpret_cast<const uchar *>(pixels.constData()), size.width(), size.height(), stride,
                  QImage::Format_ARGB32_Premultiplied)
        .copy();
}

void KdeDesktop::copy(const QByteArray &text, const QString &type)
{
    wlCopy(m_environment, text, {QStringLiteral("--type"), type});
}

QByteArray KdeDesktop::paste(const QString &type)
{
    return wlPaste(m_environment, {QStringLiteral("--type"), type});
}

} // namespace talmo::testbed
