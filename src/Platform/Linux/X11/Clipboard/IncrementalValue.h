#pragma once

#include <QByteArray>

#include <xcb/xproto.h>

namespace talmo {

/// What a selection's owner hands over for one target.
struct SelectionValue {
    QByteArray data;
    xcb_atom_t type = XCB_ATOM_NONE;
    int unitBits = 8;

    friend bool operator==(const SelectionValue &, const SelectionValue &) = default;
};

/// Puts the pieces of an INCR transfer together. The size that the owner announces is not believed: memory grows only
/// with what has come. Pure.
class IncrementalValue {
public:
    /// Bytes of a clipboard that Talmo holds at most.
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

    /// Appends the next piece; an empty one is the end. Once the state is another than Incomplete, pieces change
    /// nothing. Returns the state.
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
