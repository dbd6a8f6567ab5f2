#pragma once

#include "Base/Observable.h"

#include <functional>
#include <initializer_list>
#include <utility>

namespace talmo {

/// Refreshes a view after changes: once, on the next turn of the event loop, however many were announced. By then the
/// announced values are stored. Must not outlive what it watches.
class ChangeWatcher : public QObject {
public:
    ChangeWatcher(const Observable &watched, std::function<void()> reread)
        : ChangeWatcher({&watched}, std::move(reread))
    {
    }
    /// Null ones are skipped.
    ChangeWatcher(std::initializer_list<const Observable *> watched, std::function<void()> reread)
        : m_reread(std::move(reread))
    {
        for (const Observable *each : watched) {
            if (each != nullptr) {
                connect(each, &Observable::objectWillChange, this, [this] { noteChange(); });
            }
        }
    }

private:
    void noteChange()
    {
        if (!std::exchange(m_isPending, true)) {
            QMetaObject::invokeMethod(this, [this] { readAgain(); }, Qt::QueuedConnection);
        }
    }
    void readAgain()
    {
        m_isPending = false;
        m_reread();
    }

    std::function<void()> m_reread;
    bool m_isPending = false;
};

} // namespace talmo
