#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QList>
#include <QString>

#include <memory>

namespace talmo {

/// An object that a program exposes to assistive technologies.
struct Accessible {
    QString service;
    QString path;
};

/// A connection to the accessibility bus (AT-SPI), on which programs expose their windows to assistive technologies.
/// Keep it only as long as needed: programs do more work while a client is connected. Every call blocks until the
/// replies are in or the deadline passes; an object that does not reply counts as having no states and no children. Any
/// one thread without a user interface.
class AccessibilityBus {
public:
    /// Null unless accessibility is already running: it is never switched on for the desktop.
    static std::unique_ptr<AccessibilityBus> connect(QDeadlineTimer deadline);
    ~AccessibilityBus();
    AccessibilityBus(const AccessibilityBus &) = delete;
    AccessibilityBus &operator=(const AccessibilityBus &) = delete;

    /// All programs on the bus.
    QList<Accessible> applications();
    /// The programs with this process ID. A program may register more than once.
    QList<Accessible> applications(qint64 processId);

    struct Status {
        bool isActive = false;  ///< A window with the keyboard focus.
        bool isFocused = false; ///< The object with the keyboard focus.
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
