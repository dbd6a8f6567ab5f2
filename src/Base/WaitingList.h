#pragma once

#include "Base/Completion.h"

#include <QFuture>

#include <memory>
#include <utility>
#include <vector>

namespace talmo {

/// Futures that wait for the same event.
class WaitingList {
public:
    QFuture<void> wait()
    {
        m_waiting.push_back(Completion<void>::make());
        return m_waiting.back()->future();
    }
    /// The event has come: finishes all of them.
    void finish()
    {
        for (const auto &waiting : std::exchange(m_waiting, {})) {
            waiting->finish();
        }
    }

private:
    std::vector<std::shared_ptr<Completion<void>>> m_waiting;
};

} // namespace talmo
