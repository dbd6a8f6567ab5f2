#pragma once

#include "Platform/Linux/Session/TrayEmbedding.h"

#include <QAbstractNativeEventFilter>

namespace talmo {

/// The XEmbed tray of an X11 panel.
class EmbeddedTray final : public TrayEmbedding, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    EmbeddedTray();
    ~EmbeddedTray() override;

    bool hasTray() const override;
    QList<quint32> colours() const override;
    std::optional<QColor> background() const override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
};

} // namespace talmo
