#include "TourDesktops.h"

#include "Base/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace talmo::testbed {

namespace {

/// Without it, the panel asks which layout to begin with.
const char *const xfcePanel = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <!-- background -->
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
        <value type="int" value="4"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="applicationsmenu"/>
    <property name="plugin-2" type="string" value="tasklist"/>
    <property name="plugin-3" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-4" type="string" value="systray"/>
  </property>
</channel>
)";

const char *const i3Config = R"(# i3 config file (v4)
font pango:DejaVu Sans Mono 9
bar {
  position bottom
}
)";

const char *const lxqtPanel = R"([General]
__userfile__=true
iconTheme=

[panel1]
alignment=-1
desktop=0
height=32
plugins=mainmenu, taskbar, tray, statusnotifier
position=Bottom
width=100
width-percent=true

[mainmenu]
alignment=Left
type=mainmenu

[taskbar]
alignment=Left
type=taskbar

[tray]
alignment=Right
type=tray

[statusnotifier]
alignment=Right
type=statusnotifier
)";

/// The module that tray icons register with; a whole session loads it in a later phase.
const char *const plasmaTray = "until dbus-send --session --print-reply --dest=org.kde.kded5 /kded "
                               "org.kde.kded5.loadModule string:statusnotifierwatcher; do sleep 0.2; done";

const char *const xfceBackground = R"(<property name="background-style" type="uint" value="1"/>
      <property name="background-rgba" type="array">
        <value type="double" value="%1"/>
        <value type="double" value="%2"/>
        <value type="double" value="%3"/>
        <value type="double" value="1"/>
      </property>)";

const char *const mateSettings = R"([org/mate/panel/toplevels/top/background]
type='color'
color='%1'
)";

const char *const cinnamonSettings = R"([org/cinnamon/theme]
name='Tour'
)";

const char *const cinnamonTheme = R"(@import url("/usr/share/cinnamon/theme/cinnamon.css");
.panel-top, .panel-bottom { background-color: %1; }
)";

/// Plasma's own theme takes the colours of the windows.
const char *const plasmaColours = R"([Colors:Window]
BackgroundNormal=%1,%2,%3
ForegroundNormal=%4
)";

/// Relative to the configuration folder; read as GSETTINGS_BACKEND says.
const QString keyfile = QStringLiteral("glib-2.0/settings/keyfile");

void write(const QString &path, const QString &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const auto bytes = text.toUtf8();
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw Error(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
    }
}

} // namespace

const QList<TourDesktop> &tourDesktops()
{
    static const QList<TourDesktop> all{
        {QStringLiteral("xfce"),
         {{QStringLiteral("xfwm4")}, {QStringLiteral("xfdesktop")}, {QStringLiteral("xfce4-panel")}},
         {{QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"), QString::fromLatin1(xfcePanel)}},
         QStringLiteral("XFCE")},
        {QStringLiteral("i3"),
         {{QStringLiteral("i3")}},
         {{QStringLiteral("i3/config"), QString::fromLatin1(i3Config)}},
         QStringLiteral("i3")},
        {QStringLiteral("mate"),
         {{QStringLiteral("marco")}, {QStringLiteral("mate-panel")}},
         {},
         QStringLiteral("MATE")},
        {QStringLiteral("lxqt"),
         {{QStringLiteral("openbox")}, {QStringLiteral("lxqt-panel")}},
         {{QStringLiteral("lxqt/panel.conf"), QString::fromLatin1(lxqtPanel)},
          {QStringLiteral("lxqt/lxqt.conf"), QStringLiteral("[General]\ntheme=light\n")}},
         QStringLiteral("LXQt")},
        {QStringLiteral("cinnamon"), {{QStringLiteral("cinnamon")}}, {}, QStringLiteral("X-Cinnamon")},
        {QStringLiteral("plasma"),
         {{QStringLiteral("kwin_x11")},
          {QStringLiteral("kded5")},
          {QStringLiteral("sh"), QStringLiteral("-c"), QString::fromLatin1(plasmaTray)},
          {QStringLiteral("plasmashell")}},
         {},
         QStringLiteral("KDE")},
    };
    return all;
}

TourDesktop withPanel(TourDesktop desktop, const QColor &colour)
{
    if (desktop.name == QStringLiteral("xfce")) {
        const QString background = QString::fromLatin1(xfceBackground)
                                       .arg(double(colour.redF()))
                                       .arg(double(colour.greenF()))
                                       .arg(double(colour.blueF()));
        desktop.files.first().second.replace(QStringLiteral("<!-- background -->"), background);
    } else if (desktop.name == QStringLiteral("mate")) {
        desktop.files.append({keyfile, QString::fromLatin1(mateSettings).arg(colour.name())});
    } else if (desktop.name == QStringLiteral("cinnamon")) {
        desktop.files.append({keyfile, QString::fromLatin1(cinnamonSettings)});
        desktop.files.append({QStringLiteral("../.themes/Tour/cinnamon/cinnamon.css"),
                              QString::fromLatin1(cinnamonTheme).arg(colour.name())});
    } else if (desktop.name == QStringLiteral("plasma")) {
        const QString text = colour.lightness() < 128 ? QStringLiteral("255,255,255") : QStringLiteral("0,0,0");
        desktop.files.append(
            {QStringLiteral("kdeglobals"),
             QString::fromLatin1(plasmaColours).arg(colour.red()).arg(colour.green()).arg(colour.blue()).arg(text)});
    } else {
        throw Error(QStringLiteral("The colour of this desktop's panel cannot be set."));
    }
    return desktop;
}

std::vector<std::unique_ptr<ChildProcess>> startDesktop(const TourDesktop &desktop, const QString &folder,
                                                        const QProcessEnvironment &environment)
{
    for (const auto &[path, text] : desktop.files) {
        write(QDir(folder).filePath(path), text);
    }
    std::vector<std::unique_ptr<ChildProcess>> programs;
    for (const auto &program : desktop.programs) {
        programs.push_back(std::make_unique<ChildProcess>(program.first(), program.mid(1), environment));
    }
    return programs;
}

} // namespace talmo::testbed
