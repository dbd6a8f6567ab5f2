#include "Main/HotkeySettingsModel.h"

#include "Platform/Linux/System/LinuxSettings.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

#include <utility>

namespace talmo::test {

namespace {

using testing::ElementsAre;

/// Uses whatever it is told to.
class FakeHotkeyControl final : public HotkeyControl {
public:
    Keys state{{{u"Control_R"_s, u"Right Ctrl"_s}}, {}, {}, {}, {}};
    std::function<void(const Press &)> onPress;
    bool isThere = true;

    void setKeys(const QStringList &names) override
    {
        state.used.clear();
        for (const auto &name : names) {
            state.used.append({name, u"the "_s + name});
        }
    }
    Keys keys() const override { return state; }
    void beginCapture(std::function<void(const Press &)> callback) override { onPress = std::move(callback); }
    void endCapture() override { onPress = {}; }
    void setReleased(bool) override {}
    std::optional<Key> suggestion() const override { return Key{u"F9"_s, u"F9"_s}; }
    bool isOnKeyboard(const QString &) const override { return isThere; }
};

class HotkeySettingsModelTest : public testing::Test {
protected:
    void press(const HotkeyControl::Press &press) { std::exchange(control->onPress, {})(press); }
    QStringList stored() const
    {
        return defaults->stringArray(LinuxSettings::standInKeysKey()).value_or(QStringList());
    }

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<FakeHotkeyControl> control = std::make_shared<FakeHotkeyControl>();
    QString name;
    HotkeySettingsModel model{defaults, control, [this](const QString &renamed) { name = renamed; }};
};

constexpr auto usable = HotkeyControl::Press::Kind::Usable;

} // namespace

TEST_F(HotkeySettingsModelTest, pressedKeyIsStoredAndNamedAtOnce)
{
    model.beginCapture(HotkeySettings::Capture::Replace);
    EXPECT_EQ(model.capture(), HotkeySettings::Capture::Replace);
    press({usable, {u"F9"_s, u"F9"_s}});
    EXPECT_EQ(model.capture(), std::nullopt);
    EXPECT_EQ(stored(), QStringList{u"F9"_s});
    EXPECT_EQ(name, u"the F9"_s);
}

TEST_F(HotkeySettingsModelTest, keysAreAddedAndRemoved)
{
    model.beginCapture(HotkeySettings::Capture::Add);
    press({usable, {u"F9"_s, u"F9"_s}});
    EXPECT_EQ(stored(), (QStringList{u"Control_R"_s, u"F9"_s}));
    model.remove(u"Control_R"_s);
    EXPECT_EQ(stored(), QStringList{u"F9"_s});
    model.remove(u"F9"_s);
    EXPECT_EQ(stored(), QStringList{u"F9"_s}) << "without a key nobody can dictate";
}

TEST_F(HotkeySettingsModelTest, refusesKeysThatTypeUntilAnotherIsPressed)
{
    model.beginCapture(HotkeySettings::Capture::Replace);
    press({HotkeyControl::Press::Kind::Typing, {u"a"_s, u"a"_s}});
    EXPECT_TRUE(model.problem().startsWith(u"“a” types text"_s));
    EXPECT_EQ(stored(), QStringList());
    model.beginCapture(HotkeySettings::Capture::Replace);
    EXPECT_EQ(model.problem(), QString());
    press({HotkeyControl::Press::Kind::Cancelled, {}});
    EXPECT_EQ(model.problem(), QString());
    EXPECT_EQ(stored(), QStringList());
}

TEST_F(HotkeySettingsModelTest, reportsProblemsInSettingsFile)
{
    control->state.unknown = {u"Contrl_R"_s};
    control->state.taken = {u"F9"_s};
    EXPECT_TRUE(model.problem().contains(u"“Contrl_R”, which does not exist"_s));
    EXPECT_TRUE(model.problem().contains(u"Another program uses “F9”"_s));
}

TEST_F(HotkeySettingsModelTest, suggestsAKeyUntilOneIsChosenThatExists)
{
    EXPECT_TRUE(model.suggestion().has_value());
    model.use(u"F9"_s);
    EXPECT_FALSE(model.suggestion().has_value());
    control->isThere = false;
    EXPECT_TRUE(model.suggestion().has_value());
}

} // namespace talmo::test
