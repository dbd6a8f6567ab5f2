// Against a stand-in for the portal: the one of Debian 12 has no tokens. tests/Gnome/run pastes in GNOME Shell.

#include "Platform/Linux/Wayland/Portal/LentKeyboardPaster.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboardPermission.h"
#include "Platform/Linux/Wayland/Portal/PortalFixture.h"
#include "Platform/Linux/Wayland/Portal/PortalKeyboard.h"
#include "Support/ManualClock.h"
#include "Support/MemoryUserDefaults.h"
#include "Waiting.h"

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using Outcome = PasteReceipt::Outcome;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class LentKeyboardTest : public PortalFixture {
protected:
    void open(const MockPortal::Behaviour &behaviour = {})
    {
        portal.emplace(behaviour);
        const QString key = LentKeyboardPermission::tokenKey();
        keyboard = std::make_shared<PortalKeyboard>(
            bus,
            PortalKeyboard::TokenStore{[this, key] { return defaults->string(key).value_or(QString()); },
                                       [this, key](const QString &token) { defaults->set(key, token); }},
            clock);
        paster = std::make_shared<LentKeyboardPaster>(keyboard, nullptr);
        permission = std::make_unique<LentKeyboardPermission>(defaults, keyboard, paster);
    }
    void allow()
    {
        permission->setAllowed(true);
        ASSERT_TRUE(waitFor([this] { return defaults->boolean(LentKeyboardPermission::consentKey()).has_value(); }));
    }
    Outcome press()
    {
        const auto front = paster->front();
        const auto pressed = paster->press(front.result().window, front.result().style);
        EXPECT_TRUE(waitFor(pressed));
        return pressed.result();
    }
    /// The user does not answer the dialog.
    Outcome pressInVain()
    {
        const auto pressed = paster->press(LentKeyboardPaster::anyWindow, PasteStyle::ShiftInsertPrimary);
        EXPECT_TRUE(testbed::pollUntil([this] { return portal->calls().last() == u"start token 1"_s; }, 10s));
        clock->advance(PortalKeyboard::longestPress - 1ms);
        EXPECT_FALSE(pressed.isFinished());
        clock->advance(1ms);
        EXPECT_TRUE(waitFor(pressed));
        return pressed.result();
    }
    /// Whether this many sessions have ended, which is the last that is called.
    bool waitForEnds(qsizetype count)
    {
        return testbed::pollUntil([&] { return portal->calls().count(u"close"_s) == count; }, 10s);
    }
    QString token() const { return defaults->string(LentKeyboardPermission::tokenKey()).value_or(QString()); }

    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<PortalKeyboard> keyboard;
    std::shared_ptr<LentKeyboardPaster> paster;
    std::unique_ptr<LentKeyboardPermission> permission;
};

} // namespace

TEST_F(LentKeyboardTest, needsPortalWithTokens)
{
    MockPortal::Behaviour behaviour;
    behaviour.remoteDesktopVersion = 1;
    portal.emplace(behaviour);
    EXPECT_FALSE(PortalKeyboard::isOffered(bus));
    portal->change({});
    EXPECT_TRUE(PortalKeyboard::isOffered(bus));
}

TEST_F(LentKeyboardTest, asksNothingUntilUserAllows)
{
    open();
    EXPECT_FALSE(permission->isAllowed());
    EXPECT_FALSE(paster->isAvailable());
    EXPECT_EQ(press(), Outcome::CannotType);
    EXPECT_THAT(portal->calls(), IsEmpty());
}

TEST_F(LentKeyboardTest, consentKeepsTokenAndPressesNothing)
{
    open();
    allow();
    EXPECT_THAT(portal->calls().mid(0, 2), ElementsAre(u"select 1 2"_s, u"start "_s));
    EXPECT_EQ(token(), u"token 1"_s);
    EXPECT_TRUE(permission->isAllowed());
    EXPECT_EQ(permission->problem(), QString());
    EXPECT_TRUE(paster->isAvailable());
    EXPECT_TRUE(waitForEnds(1));
}

TEST_F(LentKeyboardTest, pressesShortcutInSessionOfItsOwnAndReplacesToken)
{
    open();
    allow();
    MockPortal::Behaviour behaviour;
    behaviour.newToken = u"token 2"_s;
    portal->change(behaviour);
    ASSERT_TRUE(waitForEnds(1));
    const auto before = portal->calls().size();
    EXPECT_EQ(press(), Outcome::Taken);
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_THAT(portal->calls().mid(before), ElementsAre(u"select 1 2"_s, u"start token 1"_s, u"key 42 1"_s,
                                                         u"key 110 1"_s, u"key 110 0"_s, u"key 42 0"_s, u"close"_s));
    EXPECT_EQ(token(), u"token 2"_s);
}

TEST_F(LentKeyboardTest, refusalLeavesSwitchOffAndSaysSo)
{
    MockPortal::Behaviour behaviour;
    behaviour.response = 1;
    open(behaviour);
    allow();
    EXPECT_FALSE(permission->isAllowed());
    EXPECT_FALSE(permission->problem().isEmpty());
    EXPECT_FALSE(paster->isAvailable());
}

TEST_F(LentKeyboardTest, consentForThisSessionOnlyIsNotEnough)
{
    MockPortal::Behaviour behaviour;
    behaviour.newToken.clear();
    open(behaviour);
    allow();
    EXPECT_FALSE(permission->isAllowed()) << "every paste would ask";
    EXPECT_FALSE(permission->problem().isEmpty());
}

TEST_F(LentKeyboardTest, withdrawnConsentRefusesPasteAndForgetsToken)
{
    open();
    allow();
    MockPortal::Behaviour behaviour;
    behaviour.asksUser = true;
    portal->change(behaviour);
    EXPECT_EQ(pressInVain(), Outcome::CannotType);
    EXPECT_EQ(token(), QString());
    EXPECT_FALSE(permission->problem().isEmpty());
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_THAT(portal->calls(), Not(Contains(u"key 42 1"_s)));
    const auto calls = portal->calls().size();
    EXPECT_EQ(press(), Outcome::CannotType);
    EXPECT_EQ(portal->calls().size(), calls) << "the dialog would appear again";
}

TEST_F(LentKeyboardTest, switchingOffForgetsToken)
{
    open();
    allow();
    permission->setAllowed(false);
    EXPECT_EQ(token(), QString());
    EXPECT_FALSE(paster->isAvailable());
    EXPECT_EQ(press(), Outcome::CannotType);
}

} // namespace talmo::test
