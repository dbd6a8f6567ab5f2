#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QList>
#include <QString>

#include <memory>

namespace talmo {

/// An object that a program shows to assistive technologies.
struct Accessible {
    QString service;
    QString path;
};

/// A connection to the bus on which programs show their windows to assistive technologies (AT-SPI). It exists only
/// while it is needed: programs do more work for a listener that stays. Every call waits for its answers, until the
/// deadline at most; an object that gives none counts as having no states and no children. Any one thread without a
/// user interface.
class AccessibilityBus {
public:
    /// Null unless accessibility is running already: it is never switched on for the desktop.
    static std::unique_ptr<AccessibilityBus> connect(QDeadlineTimer deadline);
    ~AccessibilityBus();
    AccessibilityBus(const AccessibilityBus &) = delete;
    AccessibilityBus &operator=(const AccessibilityBus &) = delete;

    /// The programs with this process ID. A program may register more than once.
    QList<Accessible> applications(qint64 processId);

    struct Status {
        bool isActive = false;  ///< A window that has the keyboard.
        bool isFocused = false; ///< The object that has it.
        bool isShowing = false;
        int childCount = 0;
    };
    /// In the order of the objects.
    QList<Status> statuses(const QList<Accessible> &objects);
    /// The children of all of them, in order.
    QList<Accessible> children(const QList<Accessible> &parents);
    bool isPasswordField(const Accessible &object);

    bool isLate() const { return m_deadline.hasExpired(); }

private:
    AccessibilityBus(QDBusConnection connection, QDeadlineTimer deadline);
    QList<QDBusMessage> ask(const QList<QDBusMessage> &questions);

    QDBusConnection m_connection;
    QDeadlineTimer m_deadline;
};

} // namespace talmo
