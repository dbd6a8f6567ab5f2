#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/XSession.h"

#include <QCoro/QCoroTask>

#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

/// Reads other programs' selections, piece by piece where they send it so. The X session's thread only.
class SelectionReader {
public:
    explicit SelectionReader(XSession &session);

    /// Everything that the owner offers and hands over before the time is up, in its order, but for targets that
    /// only steer the protocol or do something to the owner's document. Empty without an owner.
    QCoro::Task<QList<PasteboardRepresentation>> read(xcb_atom_t selection, std::chrono::milliseconds patience);

    /// Has the owner convert one target for what it does, not for what it gives. Returns when it has, refuses, or the
    /// time is up; at once without an owner.
    QCoro::Task<void> ask(xcb_atom_t selection, QByteArray target, std::chrono::milliseconds patience);

private:
    struct Conversion;
    struct Value {
        QByteArray data;
        xcb_atom_t type = XCB_ATOM_NONE;
        int unitBits = 8;
    };

    QFuture<std::optional<Value>> convert(xcb_atom_t selection, xcb_atom_t target);
    QList<xcb_atom_t> readableTargets(const Value &targets);
    void handleEvent(const xcb_generic_event_t &event);
    void handleNotify(const xcb_selection_notify_event_t &event);
    void handleProperty(const xcb_property_notify_event_t &event);
    std::optional<Value> takeProperty(xcb_atom_t property);
    std::shared_ptr<Conversion> findConversion(xcb_atom_t property) const;
    void finish(std::shared_ptr<Conversion> conversion, std::optional<Value> value);
    void giveUp();

    XSession &m_session;
    QTimer m_deadline;
    bool m_isOverdue = false;
    std::vector<std::shared_ptr<Conversion>> m_conversions;
    unsigned m_counter = 0;
};

} // namespace talmo
