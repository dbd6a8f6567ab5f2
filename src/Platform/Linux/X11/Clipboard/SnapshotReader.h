#pragma once

#include "Platform/Linux/X11/Clipboard/SecretOwner.h"
#include "Platform/Linux/X11/Clipboard/SelectionReader.h"
#include "Platform/Linux/X11/Clipboard/SelectionServer.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <memory>

namespace talmo {

/// Reads what a paste will replace, reports what could not be read, and notices a password manager's secret. The X
/// session's thread only.
class SnapshotReader {
public:
    using Content = QList<PasteboardRepresentation>;
    using OnLoss = std::function<void(SelectionReading::Loss)>;

    /// `secret` must outlive this.
    SnapshotReader(XSession &session, SecretLifetime &secret);

    /// Called if some of a selection's content could not be read.
    void setOnLoss(OnLoss callback) { m_onLoss = std::move(callback); }

    /// The content of the server's selection; what the server offers itself if Talmo is the owner. The server must
    /// outlive the task.
    static QCoro::Task<Content> read(std::shared_ptr<SnapshotReader> self, SelectionServer *server);

    /// Asks the desktop's clipboard manager, if there is one, to take over what Talmo offers.
    QCoro::Task<void> handOver();

private:
    XSession &m_session;
    SecretLifetime &m_secret;
    SecretOwner m_secretOwner;
    SelectionReader m_reader;
    OnLoss m_onLoss;
};

} // namespace talmo
