#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/Wayland/Clipboard/DataControl.h"
#include "Platform/Linux/Wayland/Clipboard/PipeWriter.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <list>
#include <memory>

namespace talmo {

/// Owns one selection and serves it to whoever reads it. The session's thread only.
class OwnedSelection {
public:
    using Content = QList<PasteboardRepresentation>;

    OwnedSelection(DataControl &control, WaylandSelection selection);
    ~OwnedSelection();
    OwnedSelection(const OwnedSelection &) = delete;
    OwnedSelection &operator=(const OwnedSelection &) = delete;

    bool isOwner() const { return m_source != nullptr; }
    /// Never read back through the compositor: Talmo would wait for itself.
    const Content &content() const { return m_content; }

    /// Takes the selection and serves this content from then on.
    void own(Content content);
    /// Clears the selection if Talmo still owns it.
    void disown();

    struct Read {
        /// When the program asked; the value has been sent since.
        std::chrono::steady_clock::time_point time;
        /// The program has received a value that it can insert, not only a hint.
        bool hasText = false;
    };
    /// Called when a program has read a value.
    void setOnRead(std::function<void(const Read &)> callback) { m_onRead = std::move(callback); }
    /// Called when another program has taken the selection.
    void setOnLost(std::function<void()> callback) { m_onLost = std::move(callback); }
    /// True while a program is still reading.
    bool isSending() const { return !m_transfers.empty(); }

private:
    void send(zwlr_data_control_source_v1 *source, const QString &type, FileDescriptor pipe);
    void handleCancelled(zwlr_data_control_source_v1 *source);

    DataControl &m_control;
    WaylandSelection m_selection;
    zwlr_data_control_source_v1 *m_source = nullptr;
    /// Replaced ones, until the compositor has said so; they serve nothing any longer.
    std::list<zwlr_data_control_source_v1 *> m_replaced;
    Content m_content;
    std::list<std::unique_ptr<PipeWriter>> m_transfers;
    std::function<void(const Read &)> m_onRead;
    std::function<void()> m_onLost;
    QObject m_context;
};

} // namespace talmo
