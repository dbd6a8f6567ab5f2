#pragma once

#include "Base/Text.h"

#include <QString>

#include <utility>

namespace talmo {

/// The state of a dictation. Two states are equal if they are the same case with the same message.
class TalmoState {
public:
    enum class Case { Idle, Recording, Processing, Inserting, Error };

    static TalmoState idle() { return TalmoState(Case::Idle); }
    static TalmoState recording() { return TalmoState(Case::Recording); }
    static TalmoState processing() { return TalmoState(Case::Processing); }
    static TalmoState inserting() { return TalmoState(Case::Inserting); }
    /// `message` is shown to the user.
    static TalmoState error(QString message) { return TalmoState(Case::Error, std::move(message)); }

    Case which() const { return m_case; }
    bool is(Case which) const { return m_case == which; }
    /// Empty unless this is an error.
    QString message() const { return m_message; }

    bool operator==(const TalmoState &other) const
    {
        return m_case == other.m_case && Text::equal(m_message, other.m_message);
    }

private:
    explicit TalmoState(Case which, QString message = {})
        : m_case(which),
          m_message(std::move(message))
    {
    }

    Case m_case;
    QString m_message;
};

/// The state's name for the log: "idle", "recording", "processing", "inserting" or "error".
QString name(const TalmoState &state);

} // namespace talmo
