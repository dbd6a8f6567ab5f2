#include "Platform/Linux/Keys/TriggerKeys.h"

#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <gmock/gmock.h>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::SizeIs;

} // namespace

TEST(TriggerKeys, defaultsToRightCtrl)
{
    const auto symbols = triggerKeySymbols({});
    EXPECT_THAT(symbols, ElementsAre(XKB_KEY_Control_R, XKB_KEY_XF86WakeUp, XKB_KEY_F13));
    EXPECT_EQ(keyDisplayName(symbols.first()), u"Right Ctrl"_s);
}

TEST(TriggerKeys, acceptsKeyNamesOfXServer)
{
    EXPECT_THAT(triggerKeySymbols({u"F14"_s, u"pause"_s, u"F14"_s}), ElementsAre(XKB_KEY_F14, XKB_KEY_Pause));
    EXPECT_EQ(keyDisplayName(XKB_KEY_F14), u"F14"_s);
    EXPECT_EQ(keyDisplayName(XKB_KEY_ISO_Level3_Shift), u"AltGr"_s);
}

TEST(TriggerKeys, ignoresUnknownNamesAndKeysThatProduceText)
{
    const RecordingLog log;
    EXPECT_THAT(triggerKeySymbols({u"Contrl_R"_s, u"a"_s, u"space"_s, u"Return"_s, u"F14"_s}),
                ElementsAre(XKB_KEY_F14));
    EXPECT_THAT(log.lines(), SizeIs(4));
    EXPECT_TRUE(log.lines().at(0).contains(u"Contrl_R"_s));
    EXPECT_THAT(triggerKeySymbols({u"a"_s}), SizeIs(3)) << "without a valid key the defaults apply";
}

TEST(TriggerKeys, keepsNamesThatCannotBeUsedForTheUser)
{
    const auto parsed = TriggerKeyNames::parse({u"Contrl_R"_s, u"a"_s, u"F14"_s});
    EXPECT_EQ(parsed.unknown, QStringList{u"Contrl_R"_s});
    EXPECT_EQ(parsed.typing, QStringList{u"a"_s});
    EXPECT_FALSE(parsed.areDefault);
    EXPECT_TRUE(TriggerKeyNames::parse({}).areDefault);
}

TEST(TriggerKeys, sharesModifiersAndLocksOnly)
{
    for (const quint32 shared :
         std::initializer_list<quint32>{XKB_KEY_Control_R, XKB_KEY_Super_L, XKB_KEY_ISO_Level3_Shift, XKB_KEY_Caps_Lock,
                                        XKB_KEY_Scroll_Lock, XKB_KEY_Shift_L, XKB_KEY_Hyper_R}) {
        EXPECT_TRUE(isModifierKey(shared)) << keyName(shared).toStdString();
    }
    for (const quint32 kept :
         std::initializer_list<quint32>{XKB_KEY_F5, XKB_KEY_Pause, XKB_KEY_Menu, XKB_KEY_XF86WakeUp, XKB_KEY_Print}) {
        EXPECT_FALSE(isModifierKey(kept)) << keyName(kept).toStdString();
    }
}

TEST(TriggerKeys, mapsKernelCodesOfHighFunctionKeys)
{
    EXPECT_EQ(functionKeyCode(XKB_KEY_F13), 183);
    EXPECT_EQ(functionKeyCode(XKB_KEY_F24), 194);
    EXPECT_EQ(functionKeyCode(XKB_KEY_F12), std::nullopt);
    EXPECT_EQ(functionKeySymbol(184), std::optional<quint32>(XKB_KEY_F14));
    EXPECT_EQ(functionKeySymbol(88), std::nullopt);
}

} // namespace talmo::test
