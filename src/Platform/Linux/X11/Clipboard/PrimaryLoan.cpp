#include "Platform/Linux/X11/Clipboard/PrimaryLoan.h"

#include <utility>

namespace talmo {

PrimaryLoan::PrimaryLoan(XSession &session)
    : m_server(session, "PRIMARY")
{
}

void PrimaryLoan::take(const Content &text)
{
    m_server.own(text);
    m_isTaken = true;
}

void PrimaryLoan::giveBack()
{
    if (!std::exchange(m_isTaken, false) || !m_server.isOwner()) {
        return;
    }
    if (m_snapshot.isEmpty()) {
        m_server.disown();
    } else {
        m_server.own(m_snapshot);
    }
}

} // namespace talmo
