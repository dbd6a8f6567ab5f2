#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/X11/Clipboard/IncrementalValue.h"
#include "Platform/Linux/X11/Clipboard/SelectionTargets.h"
#include "Platform/Linux/X11/XSession.h"

#include <QCoro/QCoroTask>

#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

/// The content that another program offers in a selection, as far as it could be read.
struct SelectionReading {
    enum class Loss {
        None,
        /// Its owner did not respond, or stopped in the middle of a value.
        OwnerTooSlow,
        OwnerEnded,
        /// More than Talmo holds: IncrementalValue::maximumSize in total, SelectionTargets::maximumCount types.
        TooLarge,
        Malformed,
    };

    QList<PasteboardRepresentation> representations;
    /// Why something is missing; the first reason if there are several.
    Loss loss = Loss::None;
};

/// Reads other programs' selections, including incremental transfers. The X session's thread only.
class SelectionReader {
public:
    /// The timeouts: for an owner that sends nothing, and for everything it has.
    struct Timeout {
        std::chrono::milliseconds pause;
        std::chrono::milliseconds whole;
    };

    explicit SelectionReader(XSession &session);

    /// Everything that the owner offers and sends in time, in its order, except targets that only control the protocol
    /// or have side effects on the owner's document. Empty if there is no owner. Missing values are logged by type and
    /// size. A type that the owner lists and then refuses does not count as missing: it never existed.
    QCoro::Task<SelectionReading> read(xcb_atom_t selection, Timeout timeout);

    /// Asks the owner to convert one target for its side effect, not for its value. Returns when the owner has
    /// converted or refused it or the timeout has passed; at once if there is no owner.
    QCoro::Task<void> ask(xcb_atom_t selection, QByteArray target, Timeout timeout);

private:
    using Loss = SelectionReading::Loss;
    struct Conversion;
    struct Answer {
        std::optional<SelectionValue> value;
        Loss loss = Loss::None;
        /// The bytes received until then.
        qsizetype size = 0;
    };

    QFuture<Answer> convert(xcb_atom_t selection, xcb_atom_t target);
    SelectionTargets readableTargets(const SelectionValue &targets);
    void begin(xcb_atom_t selection, Timeout timeout);
    void noteProgress();
    void handleEvent(const xcb_generic_event_t &event);
    void handleNotify(const xcb_selection_notify_event_t &event);
    void handleProperty(const xcb_property_notify_event_t &event);
    Answer takeProperty(xcb_atom_t property);
    std::shared_ptr<Conversion> findConversion(xcb_atom_t property) const;
    void finish(std::shared_ptr<Conversion> conversion, Answer answer);
    void giveUp(Loss loss);

    XSession &m_session;
    QTimer m_deadline;
    Timeout m_timeout{};
    std::chrono::steady_clock::time_point m_end;
    Loss m_ending = Loss::None;
    xcb_window_t m_owner = XCB_NONE;
    /// The bytes that may still be received.
    qsizetype m_room = 0;
    std::vector<std::shared_ptr<Conversion>> m_conversions;
    unsigned m_counter = 0;
};

} // namespace talmo
