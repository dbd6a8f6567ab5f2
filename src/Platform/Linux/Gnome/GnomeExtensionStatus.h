#pragma once

#include "Platform/Linux/Gnome/GnomeExtension.h"
#include "Settings/DesktopExtension.h"

#include <QCoro/QCoroTask>
#include <QPointer>

#include <optional>

namespace talmo {

/// What the settings window shows of the extension of GNOME Shell.
class GnomeExtensionStatus final : public DesktopExtension {
public:
    explicit GnomeExtensionStatus(QDBusConnection bus = QDBusConnection::sessionBus());

    Status status() const override;
    void refresh() override;
    void enable() override;

    static Status statusFor(GnomeExtension::State state);

private:
    static QCoro::Task<void> takeState(QPointer<GnomeExtensionStatus> self, QFuture<GnomeExtension::State> state);
    static QCoro::Task<void> takeEnabled(QPointer<GnomeExtensionStatus> self, QFuture<GnomeExtension::State> state);

    GnomeExtension m_extension;
    std::optional<GnomeExtension::State> m_state;
    bool m_isEnabling = false;
};

} // namespace talmo
