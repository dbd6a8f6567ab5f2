// Colours and font of the desktop, and their changes, on an X server and a session bus of their own.

#include "DesktopParts.h"
#include "Platform/Linux/Session/DesktopAppearance.h"
#include "Platform/Linux/X11/Windows/XSettings.h"
#include "Support/Printing.h"
#include "Support/SettingsPortal.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QStyle>
#include <QtEndian>

#include <cstdlib>
#include <memory>

namespace talmo::test {

namespace {

std::unique_ptr<testbed::VirtualDesktop> desktop;

ColourScheme shownScheme()
{
    return Appearance::scheme(QApplication::palette());
}

void append(QByteArray &bytes, auto number)
{
    number = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&number), sizeof(number));
}

void appendFilled(QByteArray &bytes, const QByteArray &text)
{
    bytes.append(text);
    while (bytes.size() % 4 != 0) {
        bytes.append('\0');
    }
}

/// As a desktop writes them: a number among the texts, which readers have to skip.
QByteArray xSettings(const QByteArray &theme, const QByteArray &font)
{
    QByteArray bytes;
    append(bytes, quint32(0)); // Little-endian.
    append(bytes, quint32(7));
    append(bytes, quint32(3));
    const auto head = [&bytes](quint8 kind, const QByteArray &name) {
        append(bytes, kind);
        append(bytes, quint8(0));
        append(bytes, quint16(name.size()));
        appendFilled(bytes, name);
        append(bytes, quint32(7));
    };
    const auto text = [&](const QByteArray &name, const QByteArray &value) {
        head(1, name);
        append(bytes, quint32(value.size()));
        appendFilled(bytes, value);
    };
    text("Net/ThemeName", theme);
    head(0, "Net/DoubleClickTime");
    append(bytes, quint32(400));
    text("Gtk/FontName", font);
    return bytes;
}

/// A desktop's program that tells all others its settings.
class SettingsManager {
public:
    SettingsManager(const QByteArray &theme, const QByteArray &font)
        : m_window(xcb_generate_id(m_connection.get()))
    {
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        tell(theme, font);
        xcb_set_selection_owner(m_connection.get(), m_window, m_connection.atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        flush();
    }
    void tell(const QByteArray &theme, const QByteArray &font)
    {
        const QByteArray bytes = xSettings(theme, font);
        const auto name = m_connection.atom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, name, name, 8, quint32(bytes.size()),
                            bytes.constData());
        flush();
    }

private:
    /// Returns when the server has done it.
    void flush()
    {
        free(xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

    XConnection m_connection;
    xcb_window_t m_window;
};

class DesktopLooks : public testing::Test {
protected:
    DesktopLooks()
    {
        qputenv("XDG_CURRENT_DESKTOP", "XFCE");
        QApplication::setPalette(QApplication::style()->standardPalette());
        QApplication::setFont(QFont(u"Sans"_s, 10));
    }
    ~DesktopLooks() override { qunsetenv("XDG_CURRENT_DESKTOP"); }

    std::unique_ptr<DesktopAppearance> follow(const QString &wish = {}, std::shared_ptr<DesktopTheme> theme = nullptr)
    {
        return std::make_unique<DesktopAppearance>(wish, std::move(theme), [this] { ++changes; });
    }

    int changes = 0;
};

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(content);
}

const QByteArray darkColours = "[Colors:Window]\nBackgroundNormal=42,46,50\nForegroundNormal=252,252,252\n"
                               "[Colors:View]\nBackgroundNormal=27,30,32\nForegroundNormal=252,252,252\n"
                               "[Colors:Button]\nBackgroundNormal=49,54,59\nForegroundNormal=252,252,252\n"
                               "[Colors:Selection]\nBackgroundNormal=61,174,233\nForegroundNormal=252,252,252\n";
const QByteArray lightColours = "[Colors:Window]\nBackgroundNormal=239,240,241\nForegroundNormal=35,38,41\n"
                                "[Colors:Button]\nBackgroundNormal=252,252,252\nForegroundNormal=35,38,41\n";

} // namespace

TEST_F(DesktopLooks, followPortalWhileRunning)
{
    SettingsPortal portal(SettingsPortal::Preference::Dark);
    const auto looks = follow();
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Dark; }));
    portal.prefer(SettingsPortal::Preference::Light);
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Light; }));
    portal.prefer(SettingsPortal::Preference::Dark);
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Dark; }));
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(portal.readings(), 1);
}

TEST_F(DesktopLooks, keepWishOfUser)
{
    SettingsPortal portal(SettingsPortal::Preference::Light);
    const SettingsManager manager("Adwaita", "Sans 10");
    const auto looks = follow(u"dark"_s, std::make_shared<XSettings>());
    EXPECT_EQ(shownScheme(), ColourScheme::Dark);
    EXPECT_EQ(portal.readings(), 0);
}

TEST_F(DesktopLooks, followThemeAndFontOfXSettings)
{
    SettingsManager manager("Adwaita-dark", "Noto Sans Bold 12");
    const auto looks = follow({}, std::make_shared<XSettings>());
    EXPECT_EQ(shownScheme(), ColourScheme::Dark);
    EXPECT_EQ(QApplication::font().pointSizeF(), 12);
    EXPECT_EQ(QApplication::font().family(), u"Noto Sans"_s);
    manager.tell("Adwaita", "Sans 20");
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Light; }));
    EXPECT_EQ(QApplication::font().pointSizeF(), 20);
    manager.tell("Greybird-dark", "Sans 20");
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Dark; }));
}

TEST_F(DesktopLooks, preferPortalToTheme)
{
    SettingsPortal portal(SettingsPortal::Preference::Light);
    const SettingsManager manager("Adwaita-dark", "Sans 10");
    const auto looks = follow({}, std::make_shared<XSettings>());
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Light; }));
    portal.prefer(SettingsPortal::Preference::None);
    EXPECT_TRUE(waitFor([] { return shownScheme() == ColourScheme::Dark; }));
}

TEST_F(DesktopLooks, takeColoursOfPlasmaAndTheirChanges)
{
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    const QString settings = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/kdeglobals"_s;
    write(settings, darkColours);
    const auto looks = follow();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(42, 46, 50));
    EXPECT_EQ(QApplication::palette().color(QPalette::Base), QColor(27, 30, 32));
    EXPECT_EQ(QApplication::palette().color(QPalette::Highlight), QColor(61, 174, 233));
    write(settings, lightColours);
    auto signal = QDBusMessage::createSignal(u"/KGlobalSettings"_s, u"org.kde.KGlobalSettings"_s, u"notifyChange"_s);
    signal << 0 << 0;
    QDBusConnection::sessionBus().send(signal);
    EXPECT_TRUE(waitFor([] { return QApplication::palette().color(QPalette::Window) == QColor(239, 240, 241); }));
    QFile::remove(settings);
}

/// As right after the installation of Plasma: its settings have no colours, and Qt's for that case are beige.
TEST_F(DesktopLooks, takeColoursOfFreshPlasma)
{
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    const QColor beige(214, 210, 208);
    QApplication::setPalette(QPalette(QColor(223, 220, 217), beige));
    const QString scheme = qEnvironmentVariable("XDG_DATA_HOME") + u"/color-schemes/BreezeLight.colors"_s;
    write(scheme, lightColours);
    {
        const auto looks = follow();
        EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(239, 240, 241));
    }
    QFile::remove(scheme);
    qputenv("XDG_DATA_DIRS", "/nonexistent"); // Plasma's own scheme may be installed.
    QApplication::setPalette(QPalette(QColor(223, 220, 217), beige));
    const auto looks = follow();
    qunsetenv("XDG_DATA_DIRS");
    EXPECT_NE(QApplication::palette().color(QPalette::Window), beige);
}

TEST(ThemeName, impliesDarkness)
{
    EXPECT_EQ(colourSchemeOfTheme(u"Adwaita-dark"_s), ColourScheme::Dark);
    EXPECT_EQ(colourSchemeOfTheme(u"Arc-Dark"_s), ColourScheme::Dark);
    EXPECT_EQ(colourSchemeOfTheme(u"Mint-Y-Dark-Aqua"_s), ColourScheme::Dark);
    EXPECT_EQ(colourSchemeOfTheme(u"Darkness"_s), ColourScheme::Light);
    EXPECT_EQ(colourSchemeOfTheme(u"Greybird"_s), ColourScheme::Light);
    EXPECT_EQ(colourSchemeOfTheme({}), std::nullopt);
}

TEST(FontDescription, hasFamilyAndSize)
{
    EXPECT_EQ(fontOfDescription(u"Cantarell 11"_s)->family(), u"Cantarell"_s);
    EXPECT_EQ(fontOfDescription(u"Cantarell 11"_s)->pointSizeF(), 11);
    EXPECT_EQ(fontOfDescription(u"Noto Sans, Bold Italic 10.5"_s)->family(), u"Noto Sans"_s);
    EXPECT_EQ(fontOfDescription(u"Noto Sans"_s), std::nullopt);
    EXPECT_EQ(fontOfDescription({}), std::nullopt);
}

TEST(XSettingsTexts, endWhereBytesAreDamaged)
{
    const QByteArray whole = xSettings("Adwaita", "Sans 10");
    EXPECT_EQ(xSettingsTexts(whole).size(), 2);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_LE(xSettingsTexts(whole.left(length)).size(), 1);
    }
    QByteArray wrong = whole;
    wrong.replace(14, 2, "\xff\xff"); // A name that is longer than everything.
    EXPECT_TRUE(xSettingsTexts(wrong).isEmpty());
}

} // namespace talmo::test

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::unique_ptr<talmo::testbed::ChildProcess> bus;
    {
        QCoreApplication starter(argc, argv); // QProcess needs an application, and QApplication needs the display.
        talmo::test::desktop = std::make_unique<talmo::testbed::VirtualDesktop>();
        auto environment = talmo::test::desktop->environment();
        bus = talmo::testbed::startBus(environment);
        for (const char *folders : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
            qputenv(folders, environment.value(QString::fromLatin1(folders)).toLocal8Bit());
        }
    }
    int result = 0;
    {
        qputenv("QT_QPA_PLATFORM", "xcb");
        QApplication application(argc, argv);
        result = RUN_ALL_TESTS();
    }
    bus.reset();
    talmo::test::desktop.reset();
    return result;
}
