#pragma once

#include <QByteArray>

#include <xcb/xproto.h>

namespace talmo {

/// A selection's value for one target, as its owner sends it.
struct SelectionValue {
    QByteArray data;
    xcb_atom_t type = XCB_ATOM_NONE;
    int unitBits = 8;

    friend bool operator==(const SelectionValue &, const SelectionValue &) = default;
};

/// Assembles the pieces of an INCR transfer. The size that the owner announces is ignored: memory grows only with the
/// data received. Pure.
class IncrementalValue {
public:
    /// The most clipboard data that Talmo holds, in bytes.
    static constexpr qsizetype maximumSize = qsizetype(256) << 20;

    enum class State {
        Incomplete,
        Complete,
        TooLarge,
        Malformed, ///< The pieces differ in type or unit, or one is not made of whole units.
    };

    explicit IncrementalValue(qsizetype limit = maximumSize)
        : m_limit(limit)
    {
    }

    /// Appends the next piece; an empty one ends the transfer. Once the state is no longer Incomplete, pieces have no
    /// effect. Returns the state.
    State append(const SelectionValue &piece);

    State state() const { return m_state; }
    /// Bytes so far; 0 after a failure, which frees them.
    qsizetype size() const { return m_value.data.size(); }
    /// The whole value; empty unless the state is Complete.
    SelectionValue take();

private:
    State fail(State failure);

    qsizetype m_limit;
    State m_state = State::Incomplete;
    SelectionValue m_value;
};

} // namespace talmo
