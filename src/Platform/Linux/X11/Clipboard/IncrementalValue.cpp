#include "Platform/Linux/X11/Clipboard/IncrementalValue.h"

#include <utility>

namespace talmo {

namespace {

bool hasWholeUnits(const SelectionValue &piece)
{
    const bool isUnit = piece.unitBits == 8 || piece.unitBits == 16 || piece.unitBits == 32;
    return isUnit && piece.data.size() % (piece.unitBits / 8) == 0;
}

} // namespace

IncrementalValue::State IncrementalValue::append(const SelectionValue &piece)
{
    if (m_state != State::Incomplete) {
        return m_state;
    }
    const bool isFirst = m_value.data.isEmpty();
    if (piece.data.isEmpty()) {
        // Owners may end a transfer with any type and unit, so these count only if the whole value is empty.
        if (isFirst) {
            m_value = piece;
        }
        m_state = State::Complete;
        return m_state;
    }
    const bool isAlike = isFirst || (piece.type == m_value.type && piece.unitBits == m_value.unitBits);
    if (!isAlike || !hasWholeUnits(piece)) {
        return fail(State::Malformed);
    }
    if (piece.data.size() > m_limit - m_value.data.size()) {
        return fail(State::TooLarge);
    }
    m_value.type = piece.type;
    m_value.unitBits = piece.unitBits;
    m_value.data += piece.data;
    return m_state;
}

SelectionValue IncrementalValue::take()
{
    return m_state == State::Complete ? std::exchange(m_value, {}) : SelectionValue();
}

IncrementalValue::State IncrementalValue::fail(State failure)
{
    m_value = {};
    m_state = failure;
    return m_state;
}

} // namespace talmo
