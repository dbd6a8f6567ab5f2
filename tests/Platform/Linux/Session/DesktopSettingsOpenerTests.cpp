#include "Platform/Linux/Session/DesktopSettingsOpener.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

QString command(SettingsPane pane, const QString &desktops, const QStringList &installed)
{
    return settingsCommand(pane, desktops.split(u':'),
                           [&installed](const QString &program) { return installed.contains(program); })
        .join(u' ');
}

} // namespace

TEST(DesktopSettingsOpener, choosesPaneByDesktop)
{
    const QStringList all{u"gnome-control-center"_s, u"systemsettings"_s,      u"cinnamon-settings"_s,
                          u"mate-at-properties"_s,   u"mate-volume-control"_s, u"xfce4-accessibility-settings"_s,
                          u"pavucontrol"_s};
    struct Row {
        QString desktops;
        QString accessibility;
        QString microphone;
    };
    for (const auto &row : std::vector<Row>{
             {u"GNOME"_s, u"gnome-control-center universal-access"_s, u"gnome-control-center sound"_s},
             {u"ubuntu:GNOME"_s, u"gnome-control-center universal-access"_s, u"gnome-control-center sound"_s},
             {u"KDE"_s, u"systemsettings kcm_access"_s, u"systemsettings kcm_pulseaudio"_s},
             {u"X-Cinnamon"_s, u"cinnamon-settings universal-access"_s, u"cinnamon-settings sound"_s},
             {u"MATE"_s, u"mate-at-properties"_s, u"mate-volume-control"_s},
             {u"XFCE"_s, u"xfce4-accessibility-settings"_s, u"pavucontrol"_s},
             {u"i3"_s, QString(), u"pavucontrol"_s},
             {QString(), QString(), u"pavucontrol"_s}}) {
        EXPECT_EQ(command(SettingsPane::Accessibility, row.desktops, all), row.accessibility)
            << row.desktops.toStdString();
        EXPECT_EQ(command(SettingsPane::Microphone, row.desktops, all), row.microphone) << row.desktops.toStdString();
    }
}

TEST(DesktopSettingsOpener, skipsMissingPrograms)
{
    EXPECT_EQ(command(SettingsPane::Microphone, u"GNOME"_s, {}), QString());
    EXPECT_EQ(command(SettingsPane::Microphone, u"KDE"_s, {u"pavucontrol-qt"_s}), u"pavucontrol-qt"_s);
}

} // namespace talmo::test
