#pragma once

#include "Platform/Linux/X11/Clipboard/SelectionServer.h"

namespace talmo {

/// The primary selection, which Talmo owns for the moment of a paste into a program that pastes from it. The X
/// session's thread only.
class PrimaryLoan {
public:
    using Content = QList<PasteboardRepresentation>;

    explicit PrimaryLoan(XSession &session);

    SelectionServer &server() { return m_server; }
    const SelectionServer &server() const { return m_server; }
    bool isTaken() const { return m_isTaken; }

    /// The content to give back.
    void setSnapshot(Content content) { m_snapshot = std::move(content); }
    void take(const Content &text);
    /// Unless another program has taken it in the meantime.
    void giveBack();

private:
    SelectionServer m_server;
    Content m_snapshot;
    bool m_isTaken = false;
};

} // namespace talmo
