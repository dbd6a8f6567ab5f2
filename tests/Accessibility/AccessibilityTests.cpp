// Talmo as a screen reader meets it, on a real accessibility bus.

#include "Accessibility/AccessibilityBus.h"
#include "EndToEnd/TalmoFixture.h"

#include "DesktopParts.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString reader = QStringLiteral(TALMO_TESTS_FOLDER "/Accessibility/reader.py");
constexpr quint32 returnKey = 0xff0d;
constexpr quint32 escapeKey = 0xff1b;
constexpr quint32 downKey = 0xff54;
constexpr quint32 pageDownKey = 0xff56;
constexpr quint32 endKey = 0xff57;

/// One line of the reader's tree.
struct Element {
    int depth = 0;
    QString role;
    QString name;
    QString label;
    QString description;
    QString value;
    QString states;

    bool is(const QString &state) const { return states.split(u' ').contains(state); }
};

class AccessibilityTest : public TalmoFixture {
protected:
    AccessibilityTest() { environment.remove(u"NO_AT_BRIDGE"_s); }

    void listen()
    {
        listener = std::make_unique<testbed::ChildProcess>(reader, QStringList{u"listen"_s, u"Talmo"_s}, environment);
        ASSERT_TRUE(listener->waitForLine(u"listening"_s, timeout)) << listener->output().toStdString();
    }
    bool hears(const QString &line) { return listener->waitForLine(line, timeout).has_value(); }
    QStringList heard(const QString &kind) const
    {
        QStringList lines;
        for (const auto &line : listener->lines()) {
            if (line.text.startsWith(kind)) {
                lines.append(line.text.mid(kind.size()));
            }
        }
        return lines;
    }
    QList<Element> tree()
    {
        testbed::ChildProcess process(reader, {u"tree"_s, u"Talmo"_s}, environment);
        EXPECT_TRUE(testbed::waitUntil([&process] { return !process.isRunning(); }, timeout));
        QList<Element> all;
        for (const auto &line : process.lines()) {
            const auto cells = line.text.split(u'\t');
            if (cells.size() == 7) {
                all.append({cells[0].toInt(), cells[1], cells[2], cells[3], cells[4], cells[5], cells[6]});
            }
        }
        EXPECT_FALSE(all.isEmpty()) << process.output().toStdString();
        return all;
    }
    bool isOnBus()
    {
        testbed::ChildProcess process(reader, {u"is-there"_s, u"Talmo"_s}, environment);
        EXPECT_TRUE(testbed::waitUntil([&process] { return !process.isRunning(); }, timeout));
        return process.terminate() == 0;
    }
    void talmoctl(const QString &command)
    {
        testbed::ChildProcess process(QStringLiteral(TALMO_BIN "/talmoctl"), {command}, environment);
        EXPECT_TRUE(testbed::waitUntil([&process] { return !process.isRunning(); }, timeout));
        EXPECT_EQ(process.terminate(), 0) << process.output().toStdString();
    }
    bool isMenuOpen()
    {
        const auto windows = desktop.visibleWindows();
        return std::any_of(windows.cbegin(), windows.cend(), [](const auto &each) {
            return each.program == "talmo" && !each.isManaged && each.geometry.width() > 100;
        });
    }
    void openSettings()
    {
        testbed::ChildProcess second(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
        ASSERT_TRUE(desktop.waitForActiveWindow(u"Talmo Settings"_s, timeout)) << second.output().toStdString();
    }

    std::unique_ptr<testbed::ChildProcess> bus = testbed::startBus(environment);
    std::unique_ptr<testbed::ChildProcess> listener;
};

void expectEveryControlIsNamed(const QList<Element> &elements)
{
    int controls = 0;
    for (const auto &element : elements) {
        if (element.is(u"focusable"_s) || element.role == u"progress bar"_s) {
            EXPECT_FALSE(element.name.isEmpty() && element.label.isEmpty()) << element.role.toStdString();
            EXPECT_NE(element.role, u"filler"_s) << element.name.toStdString();
            ++controls;
        }
    }
    EXPECT_GE(controls, 4);
}

} // namespace

TEST_F(AccessibilityTest, wholeDictationIsAnnouncedOnceStateByState)
{
    switchAccessibilityOn(environment);
    openQtWindow();
    startTalmo();
    listen();
    dictate(u"hello world"_s);
    ASSERT_TRUE(hears(u"says: Inserted"_s)) << listener->output().toStdString();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    keyboard.release(key);
    ASSERT_TRUE(hears(u"says: No speech detected."_s)) << listener->output().toStdString();
    EXPECT_THAT(heard(u"says: "_s), ElementsAre(u"Listening"_s, u"Cleaning up…"_s, u"Inserting…"_s, u"Inserted"_s,
                                                u"Listening"_s, u"Cleaning up…"_s, u"No speech detected."_s));
    EXPECT_THAT(heard(u"description: "_s), IsEmpty());
    EXPECT_THAT(heard(u"focus: "_s), IsEmpty());
    EXPECT_EQ(desktop.activeWindowTitle(), u"Target"_s);
}

TEST_F(AccessibilityTest, discardedRecordingIsAnnounced)
{
    switchAccessibilityOn(environment);
    openQtWindow();
    startTalmo();
    listen();
    doubleTap();
    ASSERT_TRUE(hears(u"says: Listening"_s));
    EXPECT_TRUE(testbed::pollUntil(
        [this] {
            keyboard.tap(escapeKey);
            return heard(u"says: "_s).size() > 1;
        },
        timeout));
    EXPECT_THAT(heard(u"says: "_s), ElementsAre(u"Listening"_s, u"Cancelled"_s));
}

TEST_F(AccessibilityTest, settingsAreADialogOfNamedControls)
{
    switchAccessibilityOn(environment);
    startTalmo();
    openSettings();
    for (const auto &tab : {u"General"_s, u"Dictionary"_s, u"Privacy"_s}) {
        SCOPED_TRACE(tab.toStdString());
        const auto elements = tree();
        const auto dialog = std::find_if(elements.cbegin(), elements.cend(),
                                         [](const auto &each) { return each.name == u"Talmo Settings"_s; });
        ASSERT_NE(dialog, elements.cend());
        EXPECT_EQ(dialog->role, u"dialog"_s);
        EXPECT_TRUE(dialog->is(u"active"_s));
        expectEveryControlIsNamed(elements);
        EXPECT_TRUE(std::any_of(elements.cbegin(), elements.cend(), [&tab](const auto &each) {
            return each.role == u"page tab"_s && each.name == tab && each.is(u"focused"_s);
        }));
        keyboard.press(testbed::VirtualKeyboard::controlLeft);
        keyboard.tap(pageDownKey);
        keyboard.release(testbed::VirtualKeyboard::controlLeft);
    }
}

TEST_F(AccessibilityTest, tabVisitsEveryControlOfSettingsInOrder)
{
    switchAccessibilityOn(environment);
    startTalmo();
    openSettings();
    listen();
    QStringList expected;
    for (const auto &element : tree()) {
        // The tabs are one stop.
        if (element.is(u"focusable"_s) && element.is(u"enabled"_s) && element.role != u"page tab"_s) {
            expected.append(element.role + u": "_s + element.name);
        }
    }
    for (qsizetype visited = 0; visited < expected.size(); ++visited) {
        keyboard.tap(testbed::VirtualKeyboard::tab);
        ASSERT_TRUE(testbed::waitUntil([&] { return heard(u"focus: "_s).size() > visited; }, timeout))
            << "after " << heard(u"focus: "_s).join(u" | ").toStdString();
    }
    EXPECT_EQ(heard(u"focus: "_s), expected);
}

TEST_F(AccessibilityTest, levelBarExposesItsValue)
{
    switchAccessibilityOn(environment);
    startTalmo();
    openSettings();
    const auto elements = tree();
    const auto bar = std::find_if(elements.cbegin(), elements.cend(),
                                  [](const auto &each) { return each.name == u"Microphone level"_s; });
    ASSERT_NE(bar, elements.cend());
    EXPECT_EQ(bar->role, u"progress bar"_s);
    EXPECT_EQ(bar->value, u"0"_s);
}

TEST_F(AccessibilityTest, menuIsUsedByKeyboardAndGivesFocusBack)
{
    switchAccessibilityOn(environment);
    openQtWindow();
    startTalmo();
    listen();
    desktop.takeActiveWindowChanges();
    talmoctl(u"menu"_s);
    ASSERT_TRUE(hears(u"focus: push button: Start Recording"_s)) << listener->output().toStdString();
    for (const auto &[pressed, row] : {std::pair(downKey, u"Settings"_s), std::pair(endKey, u"Quit Talmo"_s)}) {
        keyboard.tap(pressed);
        ASSERT_TRUE(hears(u"focus: push button: "_s + row)) << listener->output().toStdString();
    }
    keyboard.tap(escapeKey);
    ASSERT_TRUE(testbed::pollUntil([this] { return !isMenuOpen(); }, timeout));
    EXPECT_EQ(desktop.takeActiveWindowChanges(), 0);
    // The keyboard is back where it was.
    keyboard.tap('x');
    EXPECT_TRUE(windowShows(u"x"_s));
    talmoctl(u"menu"_s);
    ASSERT_TRUE(testbed::pollUntil([this] { return heard(u"focus: push button: Start"_s).size() == 2; }, timeout));
    keyboard.tap(returnKey);
    EXPECT_TRUE(talmoSays(u"state: recording"_s));
    EXPECT_EQ(desktop.activeWindowTitle(), u"Target"_s);
    keyboard.tap(key);
}

TEST_F(AccessibilityTest, isOnBusOnlyIfDesktopWantsAccessibility)
{
    startTalmo();
    EXPECT_FALSE(isOnBus());
    EXPECT_EQ(quitTalmo(), 0);
    switchAccessibilityOn(environment);
    startTalmo();
    EXPECT_TRUE(testbed::pollUntil([this] { return isOnBus(); }, timeout));
}

} // namespace talmo::test
