#include "talmoctl/HeldClipboard.h"

#include "Control/ControlSocket.h"

#include <utility>

namespace talmo::ctl {

namespace {

constexpr qint64 largestRequest = 4096;

/// Beside the socket of a running Talmo, which may start in the meantime.
QString path()
{
    return ControlSocket::path() + QStringLiteral(".held");
}

ControlActions restoringWith(const std::shared_ptr<PasteWitness> &witness)
{
    ControlActions actions;
    actions.putEarlierClipboardBack = [witness] { return witness->putEarlierClipboardBack(); };
    return actions;
}

} // namespace

HeldClipboard::HeldClipboard(const std::shared_ptr<PasteWitness> &witness, std::shared_ptr<Clock> clock)
    : m_server(restoringWith(witness), std::move(clock), largestRequest)
{
    m_server.listen(path()); // Whoever kept something before has lost the clipboard to this process.
}

bool HeldClipboard::restore()
{
    constexpr int connectTimeout = 500;
    constexpr int answerTimeout = 3000;
    const auto answer = ControlSocket::exchange(ControlSocket::plainRequest(ControlSocket::Command::RestoreClipboard),
                                                connectTimeout, answerTimeout, path());
    return answer == ControlSocket::answer(std::nullopt);
}

} // namespace talmo::ctl
