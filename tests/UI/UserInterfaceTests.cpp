#include "UI/UserInterface.h"

#include "App/DictationRecovery.h"
#include "Support/FakePasteboard.h"
#include "UI/AccessibleView.h"
#include "UI/Menu/StatusItemController.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>

namespace talmo::test {

namespace {

/// Holds earlier clipboard content until it is asked for.
class EarlierClipboard final : public PasteWitness {
public:
    bool isHeld = true;
    QFuture<PasteReceipt> receipt() override { return makeReadyFuture(PasteReceipt()); }
    bool holdsEarlierClipboard() const override { return isHeld; }
    QFuture<bool> putEarlierClipboardBack() override
    {
        isHeld = false;
        return makeReadyFuture(true);
    }
};

class UserInterfaceTest : public testing::Test {
protected:
    UserInterfaceTest()
        : interface(withEverything().context(), {item, panels.factory(), std::make_shared<FakeScreens>(), focus, shell})
    {
    }
    ViewWorld &withEverything()
    {
        world.pause = std::make_shared<DictationPause>();
        world.recovery = std::make_shared<DictationRecovery>(lastDictation, pasteboard, earlier);
        return world;
    }

    std::shared_ptr<LastDictation> lastDictation = std::make_shared<LastDictation>();
    std::shared_ptr<FakePasteboard> pasteboard = std::make_shared<FakePasteboard>();
    std::shared_ptr<EarlierClipboard> earlier = std::make_shared<EarlierClipboard>();
    ViewWorld world;
    FakePanels panels;
    std::shared_ptr<FakeStatusItem> item = std::make_shared<FakeStatusItem>();
    std::shared_ptr<FakeFocus> focus = std::make_shared<FakeFocus>(panels.calls);
    std::shared_ptr<FakeShell> shell = std::make_shared<FakeShell>();
    UserInterface interface;
};

} // namespace

TEST_F(UserInterfaceTest, iconShowsState)
{
    EXPECT_THAT(item->symbols, testing::ElementsAre(u"mic.circle"_s));
    world.beInserting();
    world.inserted->finish();
    settle();
    EXPECT_THAT(item->symbols, testing::ElementsAre(u"mic.circle"_s, u"waveform.circle.fill"_s, u"ellipsis.circle"_s,
                                                    u"mic.circle"_s));
    world.fail(u"broken"_s);
    EXPECT_EQ(item->symbols.back(), u"exclamationmark.circle"_s);
    EXPECT_EQ(item->menus.back().title, u"broken"_s);
}

TEST_F(UserInterfaceTest, transcriptDoesNotRedrawMenuBar)
{
    world.beRecording();
    const auto symbols = item->symbols.size();
    const auto menus = item->menus.size();
    for (int count = 0; count < 20; ++count) {
        world.hear(QString::number(count));
    }
    EXPECT_EQ(item->symbols.size(), symbols);
    EXPECT_EQ(item->menus.size(), menus);
}

TEST_F(UserInterfaceTest, clickTogglesPanel)
{
    item->onActivated(QRect(900, 0, 24, 24));
    ASSERT_NE(panels.last, nullptr);
    EXPECT_TRUE(panels.last->isVisible());
    item->onActivated(QRect(900, 0, 24, 24));
    EXPECT_FALSE(panels.last->isVisible());
}

TEST_F(UserInterfaceTest, plainMenuTriggersSameActions)
{
    item->onChosen(MenuAction::BeginDictation);
    settle();
    EXPECT_EQ(world.coordinator().state(), TalmoState::recording());
    item->onChosen(MenuAction::EndDictation);
    settle();
    EXPECT_EQ(world.coordinator().state(), TalmoState::idle());
    item->onChosen(MenuAction::Quit);
    EXPECT_THAT(shell->calls, testing::ElementsAre("terminate"));
}

TEST_F(UserInterfaceTest, plainMenuCopiesLastDictation)
{
    const auto &rows = item->menus.back().recovery;
    EXPECT_EQ(rows.first(), (MenuEntry{{}, u"Copy Last Dictation"_s, {}, MenuAction::None})) << "there is none yet";
    lastDictation->begin();
    lastDictation->noteHeard(u"hello"_s);
    lastDictation->noteCleaned(u"Hello."_s);
    world.beInserting();
    EXPECT_EQ(item->menus.back().recovery.first().action, MenuAction::CopyLastDictation);
    item->onChosen(MenuAction::CopyLastDictation);
    EXPECT_THAT(pasteboard->calls, testing::ElementsAre("clear", "setString Hello."));
}

TEST_F(UserInterfaceTest, plainMenuRestoresEarlierClipboardWhileItIsHeld)
{
    EXPECT_EQ(item->menus.back().recovery.back(),
              (MenuEntry{{}, u"Restore Earlier Clipboard"_s, {}, MenuAction::PutEarlierClipboardBack}));
    item->onChosen(MenuAction::PutEarlierClipboardBack);
    EXPECT_FALSE(earlier->isHeld);
    world.beRecording();
    EXPECT_EQ(item->menus.back().recovery.size(), 1);
}

TEST_F(UserInterfaceTest, plainMenuPausesAndResumes)
{
    EXPECT_EQ(item->menus.back().pause, (MenuEntry{{}, u"Pause Talmo"_s, {}, MenuAction::Pause}));
    item->onChosen(MenuAction::Pause);
    settle();
    EXPECT_TRUE(world.pause->isPaused());
    EXPECT_EQ(item->symbols.back(), u"pause.circle"_s);
    EXPECT_EQ(item->menus.back().title, u"Talmo is paused"_s);
    EXPECT_EQ(item->menus.back().subtitle, u"The key does nothing until you resume"_s);
    EXPECT_EQ(item->menus.back().pause.title, u"Resume Talmo"_s);
    item->onChosen(item->menus.back().pause.action);
    settle();
    EXPECT_FALSE(world.pause->isPaused());
    EXPECT_EQ(item->symbols.back(), u"mic.circle"_s);
    EXPECT_EQ(item->menus.back().title, u"Talmo is ready"_s);
}

TEST_F(UserInterfaceTest, pausedMenuStillShowsCurrentState)
{
    world.pause->setPaused(true);
    world.beRecording();
    EXPECT_EQ(item->menus.back().title, u"Listening…"_s);
    EXPECT_EQ(item->symbols.back(), u"waveform.circle.fill"_s);
}

TEST_F(UserInterfaceTest, grantingRequestsAllThreePermissions)
{
    item->onChosen(MenuAction::GrantPermissions);
    world.authorization->microphoneAnswer->finish(true);
    settle();
    world.authorization->speechAnswer->finish(3);
    settle();
    EXPECT_EQ(world.trust->requests, 1);
}

TEST_F(UserInterfaceTest, settingsWindowIsRaised)
{
    item->onChosen(MenuAction::OpenSettings);
    EXPECT_THAT(shell->calls, testing::ElementsAre("activate"));
    int windows = 0;
    for (const auto *widget : QApplication::topLevelWidgets()) {
        windows += widget->isVisible() && widget->windowTitle() == u"Talmo Settings"_s ? 1 : 0;
    }
    EXPECT_EQ(windows, 1);
}

TEST_F(UserInterfaceTest, clearsImmediatelyWhenNothingIsOpen)
{
    EXPECT_TRUE(interface.clearTheWay().isFinished());
    EXPECT_EQ(item->menuCloses, 1);
}

TEST_F(UserInterfaceTest, closesOpenPanelAndAwaitsKeyboard)
{
    item->onActivated({});
    const auto cleared = interface.clearTheWay();
    EXPECT_FALSE(panels.last->isVisible());
    EXPECT_FALSE(cleared.isFinished());
    focus->back->finish();
    EXPECT_TRUE(cleared.isFinished());
}

/// With a screen reader every control has a name, and every control is reachable with Tab.
TEST_F(UserInterfaceTest, everyControlHasNameAndRole)
{
    world.setPermissions(false, false, false);
    item->onActivated({});
    interface.openSettings();
    int controls = 0;
    for (auto *widget : QApplication::allWidgets()) {
        const bool isControl =
            qobject_cast<QAbstractButton *>(widget) != nullptr || qobject_cast<QLineEdit *>(widget) != nullptr;
        // The other tabs are hidden as well, but not what is in them.
        const auto *parent = widget->parentWidget();
        const bool isReachable =
            widget->isEnabled() && !widget->isHidden() && (parent == nullptr || !parent->isHidden());
        if (!isControl || widget->focusPolicy() == Qt::NoFocus || !isReachable) {
            continue;
        }
        auto *accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
        EXPECT_NE(accessible->role(), QAccessible::Client) << widget->metaObject()->className();
        EXPECT_NE(widget->focusPolicy() & Qt::TabFocus, 0) << widget->metaObject()->className();
        ++controls;
    }
    EXPECT_GE(controls, 12);
}

TEST_F(UserInterfaceTest, tabMovesThroughSettingsTopToBottom)
{
    interface.openSettings();
    QWidget *window = nullptr;
    for (auto *widget : QApplication::topLevelWidgets()) {
        if (widget->windowTitle() == u"Talmo Settings"_s) {
            window = widget;
        }
    }
    ASSERT_NE(window, nullptr);
    int last = -1;
    int visited = 0;
    for (auto *widget = window->nextInFocusChain(); widget != window; widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) == 0 || !widget->isVisibleTo(window) || !widget->isVisible()) {
            continue;
        }
        const int top = widget->mapTo(window, QPoint(0, 0)).y();
        EXPECT_GE(top, last) << widget->metaObject()->className();
        last = top;
        ++visited;
    }
    EXPECT_EQ(visited, 5); // The tab bar, three toggles and the picker.
}

} // namespace talmo::test
