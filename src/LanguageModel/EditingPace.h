#pragma once

#include "Base/Clock.h"

#include <QString>

#include <deque>

namespace talmo {

/// Whether the language model is too slow for this machine: three of its last ten edits were. A value without I/O.
class EditingPace {
public:
    /// An edit that took longer was slow.
    static constexpr Duration slowEdit = std::chrono::seconds(5);
    static constexpr int slowEditsUntilAdvice = 3;

    /// This model edited a dictation, or timed out on it. Another model starts from nothing.
    void note(const QString &model, Duration duration);

    /// False for a model other than the one last noted.
    bool isSlow(const QString &model) const;

private:
    QString m_model;
    std::deque<bool> m_wereSlow; ///< The last edits, the latest at the end.
};

} // namespace talmo
