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

} // namespace talmo::test
