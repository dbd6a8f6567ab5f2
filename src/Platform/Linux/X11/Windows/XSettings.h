#pragma once

#include "Platform/Linux/Session/DesktopTheme.h"

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QHash>

namespace talmo {

/// The text settings that an X11 desktop announces to all programs, from a value of "_XSETTINGS_SETTINGS". Those before
/// the first that is damaged are in the answer.
QHash<QByteArray, QString> xSettingsTexts(const QByteArray &property);

/// The theme and the font among these settings. Main thread, with a QGuiApplication on X11.
class XSettings final : public DesktopTheme, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    XSettings();
    ~XSettings() override;

    QString themeName() const override { return m_texts.value("Net/ThemeName"); }
    QString fontName() const override { return m_texts.value("Gtk/FontName"); }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void findManager();
    void refresh();

    quint32 m_manager = 0; ///< Its window; 0 if there is none.
    QHash<QByteArray, QString> m_texts;
};

} // namespace talmo
