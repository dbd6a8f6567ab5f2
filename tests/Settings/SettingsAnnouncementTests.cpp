// Every setter announces once, then stores, then writes.

#include "Settings/TalmoSettings.h"

#include "Base/Error.h"
#include "Settings/TextTone.h"
#include "Support/FakeLoginItem.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <gmock/gmock.h>

#include <functional>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Empty user defaults that report every read and write.
class WatchedDefaults final : public UserDefaults {
public:
    std::function<void(const QString &)> onSet = [](const QString &) {};
    mutable QStringList reads;

    std::optional<bool> boolean(const QString &key) const override { return none<bool>(u"boolean "_s + key); }
    std::optional<QString> string(const QString &key) const override { return none<QString>(u"string "_s + key); }
    std::optional<QStringList> stringArray(const QString &key) const override
    {
        return none<QStringList>(u"array "_s + key);
    }
    void set(const QString &key, const DefaultsValue &) override { onSet(key); }
    void registerDefault(const QString &, const DefaultsValue &) override {}

private:
    template <typename Value>
    std::optional<Value> none(const QString &read) const
    {
        reads.append(read);
        return std::nullopt;
    }
};

class SettingsAnnouncementTest : public testing::Test {
protected:
    SettingsAnnouncementTest()
    {
        QObject::connect(&settings, &Observable::objectWillChange, &settings, [this] { note(u"announced"_s); });
        defaults->onSet = [this](const QString &key) { note(key); };
    }

    void note(const QString &what) { events.push_back(what + u": "_s + value()); }
    /// All values at once, to notice a setter that changes another value.
    QString value() const
    {
        return QStringList{settings.aiCleanupEnabled() ? u"ai"_s : u"-"_s,
                           settings.conciseTextEnabled() ? u"concise"_s : u"-"_s,
                           rawValue(settings.textTone()),
                           settings.launchAtLogin() ? u"login"_s : u"-"_s,
                           settings.dictionaryWords().join(u'+'),
                           settings.hotkeyDisplayName()}
            .join(u' ');
    }
    std::vector<QString> takeEvents() { return std::exchange(events, {}); }

    std::vector<QString> events;
    std::shared_ptr<WatchedDefaults> defaults = std::make_shared<WatchedDefaults>();
    std::shared_ptr<FakeLoginItem> loginItem = std::make_shared<FakeLoginItem>();
    TalmoSettings settings{defaults, loginItem};
};

const QString fresh = u"ai - standard - Talmo+Terraform+CloudFormation+Kubernetes fn"_s;

QString replaced(QString text, const QString &before, const QString &after)
{
    return text.replace(before, after);
}

} // namespace

TEST_F(SettingsAnnouncementTest, readsEachKeyOnceWithItsOwnType)
{
    EXPECT_EQ(defaults->reads, (QStringList{u"boolean talmo.aiCleanupEnabled"_s, u"boolean talmo.conciseTextEnabled"_s,
                                            u"string talmo.textTone"_s, u"boolean talmo.launchAtLogin"_s,
                                            u"array talmo.dictionaryWords"_s, u"string talmo.hotkeyDisplayName"_s}));
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(SettingsAnnouncementTest, eachSetterAnnouncesThenStoresThenWrites)
{
    settings.setAiCleanupEnabled(false);
    QString now = replaced(fresh, u"ai -"_s, u"- -"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + fresh, u"talmo.aiCleanupEnabled: "_s + now));
    QString before = now;
    settings.setConciseTextEnabled(true);
    now = replaced(before, u"- - standard"_s, u"- concise standard"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + before, u"talmo.conciseTextEnabled: "_s + now));
    before = now;
    settings.setTextTone(TextTone::Polite);
    now = replaced(before, u"standard"_s, u"polite"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + before, u"talmo.textTone: "_s + now));
    before = now;
    settings.setLaunchAtLogin(true);
    now = replaced(before, u"polite -"_s, u"polite login"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + before, u"talmo.launchAtLogin: "_s + now));
    before = now;
    settings.setDictionaryWords({u"A"_s});
    now = replaced(before, u"Talmo+Terraform+CloudFormation+Kubernetes"_s, u"A"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + before, u"talmo.dictionaryWords: "_s + now));
    before = now;
    settings.setHotkeyDisplayName(u"F13"_s);
    now = replaced(before, u"fn"_s, u"F13"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + before, u"talmo.hotkeyDisplayName: "_s + now));
}

TEST_F(SettingsAnnouncementTest, settersAnnounceAndWriteEqualValues)
{
    settings.setAiCleanupEnabled(true);
    settings.setTextTone(TextTone::Standard);
    settings.setLaunchAtLogin(false);
    settings.setDictionaryWords(settings.dictionaryWords());
    settings.setHotkeyDisplayName(u"fn"_s);
    EXPECT_EQ(events.size(), 10U);
    for (const auto &event : events) {
        EXPECT_TRUE(event.endsWith(fresh)) << event.toStdString();
    }
}

TEST_F(SettingsAnnouncementTest, announcesAddedWordOnceAndIgnoredWordNever)
{
    settings.addDictionaryWord(u"\u2028 Qt\t\n"_s);
    const QString now = replaced(fresh, u"Kubernetes"_s, u"Kubernetes+Qt"_s);
    EXPECT_THAT(takeEvents(), ElementsAre(u"announced: "_s + fresh, u"talmo.dictionaryWords: "_s + now));
    settings.addDictionaryWord(u" Qt "_s);
    settings.addDictionaryWord(u"\n\t"_s);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(SettingsAnnouncementTest, loginItemUpdateChangesNoSetting)
{
    settings.updateLaunchAtLogin(true);
    EXPECT_THAT(loginItem->calls, ElementsAre("register"));
    EXPECT_THAT(events, IsEmpty());
    settings.setLaunchAtLogin(true);
    EXPECT_THAT(loginItem->calls, ElementsAre("register")) << "the setter alone registers nothing";
}

TEST_F(SettingsAnnouncementTest, failedUnregistrationIsLogged)
{
    const RecordingLog log;
    loginItem->answer = LoginItemStatus::Enabled;
    loginItem->isBroken = true;
    settings.updateLaunchAtLogin(false);
    EXPECT_THAT(log.lines(), ElementsAre(u"general error: Failed to update launch-at-login: no room"_s));
    EXPECT_FALSE(settings.launchAtLogin());
}

TEST_F(SettingsAnnouncementTest, releasedSharedInstanceIsRecreated)
{
    int made = 0;
    TalmoSettings::setSharedFactory([&] {
        ++made;
        return std::make_shared<TalmoSettings>(defaults, loginItem);
    });
    const std::weak_ptr<TalmoSettings> first = TalmoSettings::shared();
    TalmoSettings::releaseShared();
    EXPECT_TRUE(first.expired());
    TalmoSettings::shared();
    EXPECT_EQ(made, 2);
    TalmoSettings::releaseShared();
    TalmoSettings::setSharedFactory({});
}

} // namespace talmo::test
