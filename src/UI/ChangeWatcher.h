#pragma once

#include "Base/Observable.h"

#include <QEvent>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <utility>

namespace talmo {

/// Refreshes a view after changes: once, on the next turn of the event loop, however many were announced. By then the
/// announced values are stored. Must not outlive what it watches.
class ChangeWatcher : public QObject {
public:
    ChangeWatcher(const Observable &watched, std::function<void()> refresh, QWidget *view = nullptr)
        : ChangeWatcher({&watched}, std::move(refresh), view)
    {
    }
    /// Null ones are skipped. With a view, changes made while it is hidden again wait until it is shown: words come
    /// many times a second, mostly while the view is closed. A view that has not been shown yet is refreshed as well,
    /// so that it can be measured.
    ChangeWatcher(std::initializer_list<const Observable *> watched, std::function<void()> refresh,
                  QWidget *view = nullptr)
        : m_refresh(std::move(refresh))
    {
        for (const Observable *each : watched) {
            if (each != nullptr) {
                connect(each, &Observable::objectWillChange, this, [this] { noteChange(); });
            }
        }
        if (view != nullptr) {
            view->installEventFilter(this);
        }
    }

    bool eventFilter(QObject *view, QEvent *event) override
    {
        if (event->type() == QEvent::Hide && !event->spontaneous()) {
            m_isHidden = true;
        } else if (event->type() == QEvent::Show && !event->spontaneous()) {
            m_isHidden = false;
            if (std::exchange(m_hasMissed, false)) {
                m_refresh();
            }
        }
        return QObject::eventFilter(view, event);
    }

private:
    void noteChange()
    {
        if (m_isHidden) {
            m_hasMissed = true;
        } else if (!std::exchange(m_isPending, true)) {
            QMetaObject::invokeMethod(this, [this] { refresh(); }, Qt::QueuedConnection);
        }
    }
    void refresh()
    {
        m_isPending = false;
        m_refresh();
    }

    std::function<void()> m_refresh;
    bool m_isPending = false;
    bool m_isHidden = false;
    bool m_hasMissed = false;
};

} // namespace talmo
