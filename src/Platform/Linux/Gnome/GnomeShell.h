#pragma once

#include "Platform/Linux/Keys/ShellPaster.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>

namespace talmo {

/// Talmo's extension of GNOME Shell, over the session bus. packaging/gnome-shell describes its interface. The extension
/// may appear and disappear while Talmo runs: GNOME disables it while the screen is locked. Main thread, except where
/// said otherwise.
class GnomeShell final : public QObject, public ShellPaster {
    Q_OBJECT
public:
    struct Focus {
        quint64 window = 0;
        /// Without the suffix ".desktop".
        QString application;
        QString windowClass;
        /// 0 if unknown.
        qint64 process = 0;
        bool isPassword = false;
    };
    /// Whether to wait for Talmo's name, which only one program can own and without which the extension refuses calls.
    enum class NameWait { Queue, GiveUp };

    /// Null if there is no GNOME Shell on the session bus.
    static std::shared_ptr<GnomeShell> open(NameWait wait);
    ~GnomeShell() override;
    GnomeShell(const GnomeShell &) = delete;
    GnomeShell &operator=(const GnomeShell &) = delete;

    /// Lets another program own Talmo's name; the extension then refuses this one.
    void releaseName();

    bool isAvailable() const override { return m_isAvailable.load(); }
    QFuture<Front> front() override;
    QFuture<PasteReceipt::Outcome> press(quint64 window, PasteStyle style) override;
    /// Any thread. A window of 0 if the shell does not answer within a second.
    QFuture<Focus> focus();

    /// Any thread. Whether the focused field was given the text.
    QFuture<bool> commit(const QString &text);

    /// Makes the extension report these keys (X key names), and no others, whenever it is running.
    void watchKeys(const QStringList &keys);
    void setOnKey(std::function<void(const QString &key, bool isDown)> handler) { m_onKey = std::move(handler); }
    void setOnAvailabilityChanged(std::function<void()> handler) { m_onAvailabilityChanged = std::move(handler); }

private Q_SLOTS:
    void handleKey(const QString &key, bool isDown, qlonglong time);

private: // NOLINT(readability-redundant-access-specifiers): no slots.
    using Handler = std::function<void(const QDBusMessage &reply)>;

    GnomeShell(QDBusConnection bus, NameWait wait);
    void refresh();
    void sendKeys();
    void ask(const QString &method, const QVariantList &arguments, Handler handle);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_ownsName = false;
    std::atomic<bool> m_isAvailable = false;
    QStringList m_keys;
    /// Logged once.
    QStringList m_unreported;
    std::function<void(const QString &key, bool isDown)> m_onKey;
    std::function<void()> m_onAvailabilityChanged;
};

} // namespace talmo
