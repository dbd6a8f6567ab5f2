#include "Platform/Linux/Wayland/Kde/KdeKeyGuard.h"

#include "Base/Log.h"

#include <unistd.h>

namespace talmo {

namespace {

/// A line says that all is well; without one, the pipe was closed by Talmo's end.
const QString script =
    QStringLiteral("read -r line || exec dbus-send --session --type=method_call --dest=org.kde.kglobalaccel "
                   "/kglobalaccel org.kde.KGlobalAccel.setInactive \"array:string:$1\"");

constexpr int longestEnd = 1000; // Milliseconds.

} // namespace

KdeKeyGuard::KdeKeyGuard(const QStringList &action)
{
    // A Ctrl+C in Talmo's terminal must not end it too.
    m_shell.setChildProcessModifier([] { ::setsid(); });
    m_shell.setStandardOutputFile(QProcess::nullDevice());
    m_shell.setStandardErrorFile(QProcess::nullDevice());
    m_shell.start(QStringLiteral("/bin/sh"),
                  {QStringLiteral("-c"), script, QStringLiteral("sh"), action.join(QLatin1Char(','))});
    if (!m_shell.waitForStarted()) {
        generalLog().error("KDE's shortcut is not guarded: %@", {m_shell.errorString()});
    }
}

KdeKeyGuard::~KdeKeyGuard()
{
    m_shell.write("\n");
    m_shell.closeWriteChannel();
    m_shell.waitForFinished(longestEnd);
}

} // namespace talmo
