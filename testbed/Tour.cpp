// Goes through Talmo on a desktop that people use, without a screen: the welcome, every page of the settings, the menu
// and a dictation. Takes a picture of each.

#include "DesktopParts.h"
#include "PanelIcon.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "TourDesktops.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"
#include "VirtualPointer.h"

#include "Base/Error.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

constexpr Timeout timeout = 30s;
constexpr Timeout untilItIsDrawn = 400ms;
constexpr quint32 escape = 0xff1b;
constexpr quint32 pageDown = 0xff56;
/// More pages than this are none that a user would leaf through.
constexpr int mostPages = 9;
constexpr int widestIcon = 100;
/// What shapes need.
constexpr double leastContrast = 3;

void require(bool isSo, const QString &problem)
{
    if (!isSo) {
        throw Error(problem);
    }
}

/// Waits until the screen stays the same for a moment.
QImage settled(VirtualDesktop &desktop, Timeout atMost = 8s)
{
    QImage last = desktop.screenshot();
    int equal = 0;
    pollUntil(
        [&] {
            sleepFor(untilItIsDrawn / 2);
            const QImage now = desktop.screenshot();
            equal = std::exchange(last, now) == now ? equal + 1 : 0;
            return equal >= 2;
        },
        atMost);
    return last;
}

/// A clock in a panel may have gone on.
QImage withoutPanels(const QImage &screen)
{
    constexpr int edge = PanelIcon::highestPanel;
    return screen.copy(0, edge, screen.width(), screen.height() - 2 * edge);
}

/// Some desktops show nothing for seconds after their window manager has started.
bool hasPanel(const QImage &screen)
{
    constexpr int line = 10;
    for (const int y : {line, screen.height() - line}) {
        for (int x = 1; x < screen.width(); ++x) {
            if (screen.pixel(x, y) != screen.pixel(0, y)) {
                return true;
            }
        }
    }
    return false;
}

class Tour {
public:
    Tour(TourDesktop shown, const QString &pictureFolder)
        : m_shown(std::move(shown)),
          m_pictures(pictureFolder)
    {
        m_pictures.mkpath(QStringLiteral("."));
        m_environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), m_shown.currentDesktop);
        m_environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("talmo.general.debug=true"));
        m_environment.insert(QStringLiteral("LIBGL_ALWAYS_SOFTWARE"), QStringLiteral("1"));
        m_environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("keyfile"));
        m_bus = startBus(m_environment);
        m_desktop.storeSettings({{QStringLiteral("linux.languageModelAddress"), QStringLiteral("off")},
                                 {QStringLiteral("linux.welcomeShown"), false}});
        m_sound = std::make_unique<SoundServer>(m_desktop.folder() + QStringLiteral("/sound"), m_environment);
        m_programs = startDesktop(m_shown, m_environment.value(QStringLiteral("XDG_CONFIG_HOME")), m_environment);
        require(m_desktop.waitForWindowManager(timeout), QStringLiteral("The window manager did not start."));
        require(pollUntil([this] { return hasPanel(m_desktop.screenshot()); }, timeout),
                QStringLiteral("The panel did not appear."));
        settled(m_desktop);
    }

    /// Only the icon.
    void showIcon(const QString &panel)
    {
        m_desktop.storeSettings({{QStringLiteral("linux.languageModelAddress"), QStringLiteral("off")},
                                 {QStringLiteral("linux.welcomeShown"), true}});
        m_talmo = std::make_unique<ChildProcess>(program("talmo"), QStringList(), m_environment);
        says(QStringLiteral("ready:"));
        const bool isThere = findIcon().has_value();
        take(qPrintable(QStringLiteral("5-panel-") + QString(panel).remove(u'#')));
        require(isThere, QStringLiteral("The panel shows no icon."));
    }

    void go()
    {
        const QImage before = m_desktop.screenshot();
        m_talmo = std::make_unique<ChildProcess>(program("talmo"), QStringList(), m_environment);
        says(QStringLiteral("ready:"));
        require(m_desktop.waitForActiveWindow(QStringLiteral("Welcome to Talmo"), timeout),
                QStringLiteral("The welcome did not open."));
        const QPoint middle = before.rect().center();
        require(pollUntil([&] { return m_desktop.screenshot().pixel(middle) != before.pixel(middle); }, timeout),
                QStringLiteral("The welcome was not drawn."));
        take("1-welcome");
        showSettings();
        require(pollUntil([this] { return !isShown(true); }, timeout), QStringLiteral("The settings did not close."));
        settled(m_desktop);
        const auto icon = findIcon();
        showDictation();
        showMenu(icon);
        require(m_talmo->terminate() == 0, QStringLiteral("Talmo did not exit cleanly:\n") + m_talmo->output());
    }

private:
    static QString program(const char *name)
    {
        return QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromLatin1(name));
    }
    void says(const QString &line)
    {
        require(m_talmo->waitForLine(line, timeout, m_read).has_value(),
                QStringLiteral("Timed out waiting for “%1”:\n%2").arg(line, m_talmo->output()));
        while (!m_talmo->lines()[m_read].text.contains(line)) {
            ++m_read;
        }
        ++m_read;
    }
    void take(const char *name)
    {
        const QString file = m_pictures.absoluteFilePath(QString::fromLatin1(name) + QStringLiteral(".png"));
        require(settled(m_desktop).save(file), QStringLiteral("Cannot save ") + file);
        std::printf("%s\n", qUtf8Printable(file));
        std::fflush(stdout);
    }

    void runTalmoctl(const QString &command)
    {
        ChildProcess talmoctl(program("talmoctl"), {command}, m_environment);
        pollUntil([&talmoctl] { return !talmoctl.isRunning(); }, timeout);
    }

    /// Where its icon is, if the panel shows one: pausing Talmo changes nothing else.
    std::optional<QPoint> findIcon()
    {
        const QImage before = settled(m_desktop);
        std::optional<PanelIcon> icon;
        runTalmoctl(QStringLiteral("pause"));
        pollUntil(
            [&] {
                icon = PanelIcon::find(before, m_desktop.screenshot());
                return icon && icon->contrast >= leastContrast; // Some panels fade it in.
            },
            timeout);
        runTalmoctl(QStringLiteral("resume"));
        if (!icon) {
            std::printf("no icon in the panel\n");
            return std::nullopt;
        }
        std::printf("icon: contrast %.1f:1 with the panel's %s\n", icon->contrast, qPrintable(icon->panel.name()));
        require(icon->contrast >= leastContrast, QStringLiteral("The icon is hard to see on this panel."));
        return icon->place.center();
    }

    void showSettings()
    {
        ChildProcess second(program("talmo"), {}, m_environment);
        require(m_desktop.waitForActiveWindow(QStringLiteral("Talmo Settings"), timeout),
                QStringLiteral("The settings did not open."));
        const QImage first = withoutPanels(settled(m_desktop));
        for (int page = 1; page <= mostPages; ++page) {
            take(qPrintable(QStringLiteral("2-settings-%1").arg(page)));
            m_keyboard.press(VirtualKeyboard::controlLeft);
            m_keyboard.tap(pageDown);
            m_keyboard.release(VirtualKeyboard::controlLeft);
            if (withoutPanels(settled(m_desktop)) == first) {
                break;
            }
        }
        m_keyboard.tap(VirtualKeyboard::tab);
        m_keyboard.tap(VirtualKeyboard::tab);
        take("2-settings-by-keyboard");
        m_keyboard.tap(escape);
    }

    void showDictation()
    {
        const QString title = QStringLiteral("Notes");
        ChildProcess window(program("talmo-demo-window"), {title}, m_environment);
        require(m_desktop.waitForActiveWindow(title, timeout), QStringLiteral("The text window did not open."));
        const QString wav =
            speak(QStringLiteral("the computer does not start after the last update"), m_desktop.folder());
        m_keyboard.press(VirtualKeyboard::controlRight);
        says(QStringLiteral("state: recording"));
        m_sound->play(wav);
        take("3-recording");
        m_keyboard.release(VirtualKeyboard::controlRight);
        says(QStringLiteral("state: idle"));
        require(window.waitForLine(QStringLiteral("text: "), timeout).has_value(),
                QStringLiteral("Nothing was inserted:\n") + m_talmo->output());
        take("3-inserted");
        m_keyboard.press(VirtualKeyboard::controlRight);
        says(QStringLiteral("state: recording"));
        m_keyboard.release(VirtualKeyboard::controlRight);
        says(QStringLiteral("state: error"));
        take("3-error");
    }

    /// One of Talmo's windows that is larger than an icon: a managed one, or the menu or the card.
    bool isShown(bool isManaged)
    {
        const auto windows = m_desktop.visibleWindows();
        return std::any_of(windows.cbegin(), windows.cend(), [isManaged](const auto &window) {
            return window.program == "talmo" && window.isManaged == isManaged && window.geometry.width() > widestIcon;
        });
    }

    void showMenu(std::optional<QPoint> icon)
    {
        pollUntil([this] { return !isShown(false); }, timeout); // The card of the error goes first.
        if (icon) {
            m_pointer.clickAt(*icon);
        }
        if (!icon || !pollUntil([this] { return isShown(false); }, 3s)) {
            std::printf("no menu at the icon; opening it by talmoctl\n");
            runTalmoctl(QStringLiteral("menu"));
            require(pollUntil([this] { return isShown(false); }, timeout), QStringLiteral("The menu did not open."));
        }
        take("4-menu");
        m_keyboard.tap(escape);
        require(pollUntil([this] { return !isShown(false); }, timeout), QStringLiteral("The menu did not close."));
    }

    const TourDesktop m_shown;
    QDir m_pictures;
    VirtualDesktop m_desktop{{QStringLiteral("-screen"), QStringLiteral("0"), QStringLiteral("1366x768x24")},
                             VirtualDesktop::WindowManager::None};
    QProcessEnvironment m_environment = m_desktop.environment();
    std::unique_ptr<ChildProcess> m_bus;
    std::unique_ptr<SoundServer> m_sound;
    std::vector<std::unique_ptr<ChildProcess>> m_programs;
    VirtualKeyboard m_keyboard;
    VirtualPointer m_pointer;
    std::unique_ptr<ChildProcess> m_talmo;
    std::size_t m_read = 0;
};

} // namespace

} // namespace talmo::testbed

int main(int argc, char **argv)
{
    using namespace talmo::testbed;
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Takes pictures of Talmo on a desktop that people use."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("DESKTOP"), QStringLiteral("xfce, i3, mate, lxqt, cinnamon or plasma"));
    const QCommandLineOption pictures(QStringLiteral("pictures"), QStringLiteral("The folder for the pictures."),
                                      QStringLiteral("FOLDER"), QStringLiteral("talmo-tour"));
    const QCommandLineOption panel(QStringLiteral("panel"), QStringLiteral("Only the icon, on a panel of this colour."),
                                   QStringLiteral("COLOUR"));
    parser.addOptions({pictures, panel});
    parser.process(application);
    const QString name = parser.positionalArguments().value(0);
    const auto shown = std::find_if(tourDesktops().cbegin(), tourDesktops().cend(),
                                    [&name](const auto &each) { return each.name == name; });
    if (shown == tourDesktops().cend()) {
        parser.showHelp(EXIT_FAILURE);
    }
    try {
        if (parser.isSet(panel)) {
            Tour(withPanel(*shown, QColor(parser.value(panel))), parser.value(pictures)).showIcon(parser.value(panel));
        } else {
            Tour(*shown, parser.value(pictures)).go();
        }
        return EXIT_SUCCESS;
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "tour: %s: %s\n", qUtf8Printable(name), qUtf8Printable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
}
