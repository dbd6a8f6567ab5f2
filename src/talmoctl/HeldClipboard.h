#pragma once

#include "Insertion/PasteReceipt.h"

#include <QCoro/QCoroTask>

#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>

#include <memory>

namespace talmo::ctl {

/// Clipboard content that a command in the background keeps because the text that replaced it was not read. Another
/// command of the same user can have it restored. Main thread.
class HeldClipboard {
public:
    /// Listens until it is destroyed.
    explicit HeldClipboard(std::shared_ptr<PasteWitness> witness);

    /// Has the process that keeps earlier content restore it, and waits until it has; false if there is none.
    static bool restore();

private:
    void serve(QLocalSocket &socket);
    static QCoro::Task<void> putBack(std::shared_ptr<PasteWitness> witness, QPointer<QLocalSocket> socket);

    std::shared_ptr<PasteWitness> m_witness;
    QLocalServer m_server;
};

} // namespace talmo::ctl
