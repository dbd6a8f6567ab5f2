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

/// What another program offers in a selection, as far as it could be had.
struct SelectionReading {
    enum class Loss {
        None,
        /// Its owner did not answer, or stopped in the middle of a value.
        OwnerTooSlow,
        OwnerEnded,
        /// Beyond what Talmo holds: IncrementalValue::maximumSize in all, SelectionTargets::maximumCount types.
        TooLarge,
        Malformed,
    };

    QList<PasteboardRepresentation> representations;
    /// Why something is missing; of several reasons the first.
    Loss loss = Loss::None;
};

/// Reads other programs' selections, piece by piece where they send it so. The X session's thread only.
class SelectionReader {
public:
    /// How long an owner may go without giving anything, and how long it may take for all it has.
    struct Patience {
        std::chrono::milliseconds pause;
        std::chrono::milliseconds whole;
    };

    explicit SelectionReader(XSession &session);

    /// Everything that the owner offers and hands over in time, in its order, but for targets that only steer the
    /// protocol or do something to the owner's document. Empty without an owner. What is missing is logged by type and
    /// size. A type that the owner lists and then refuses is not missing: it was never there.
    QCoro::Task<SelectionReading> read(xcb_atom_t selection, Patience patience);

    /// Has the owner convert one target for what it does, not for what it gives. Returns when it has, refuses, or the
    /// time is up; at once without an owner.
    QCoro::Task<void> ask(xcb_atom_t selection, QByteArray target, Patience patience);

private:
    using Loss = SelectionReading::Loss;
    struct Conversion;
    struct Answer {
        std::optional<SelectionValue> value;
        Loss loss = Loss::None;
        /// Bytes that had come by then.
        qsizetype size = 0;
    };

    QFuture<Answer> convert(xcb_atom_t selection, xcb_atom_t target);
    SelectionTargets readableTargets(const SelectionValue &targets);
    void begin(xcb_atom_t selection, Patience patience);
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
    Patience m_patience{};
    std::chrono::steady_clock::time_point m_end;
    Loss m_ending = Loss::None;
    xcb_window_t m_owner = XCB_NONE;
    /// Bytes that may still come.
    qsizetype m_room = 0;
    std::vector<std::shared_ptr<Conversion>> m_conversions;
    unsigned m_counter = 0;
};

} // namespace talmo
