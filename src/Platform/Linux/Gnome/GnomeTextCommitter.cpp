#include "Platform/Linux/Gnome/GnomeTextCommitter.h"

#include "Base/Completion.h"

#include <utility>

namespace talmo {

GnomeTextCommitter::GnomeTextCommitter(std::shared_ptr<GnomeShell> shell)
    : m_shell(std::move(shell))
{
}

QString GnomeTextCommitter::switchKey()
{
    return QStringLiteral("linux.commitText");
}

QFuture<bool> GnomeTextCommitter::commit(const QString &text)
{
    return m_shell->isAvailable() ? m_shell->commit(text) : makeReadyFuture(false);
}

} // namespace talmo
