#include "UI/Menu/MenuContents.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

struct Permissions {
    bool microphone;
    bool speech;
    bool accessibility;
};

std::vector<Permissions> allPermissions()
{
    std::vector<Permissions> all;
    for (int bits = 0; bits < 8; ++bits) {
        all.push_back({(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0});
    }
    return all;
}

SimpleStatus status(bool granted)
{
    return granted ? SimpleStatus::Granted : SimpleStatus::NotDetermined;
}

MenuContents make(const TalmoState &state, const Permissions &permissions, const QString &key = u"fn"_s)
{
    return MenuContents::make(state, status(permissions.microphone), status(permissions.speech),
                              permissions.accessibility, key);
}

constexpr Permissions everything{true, true, true};

} // namespace

TEST(MenuContents, eachMissingPermissionWarnsInEveryState)
{
    const TalmoState states[] = {TalmoState::idle(), TalmoState::recording(), TalmoState::processing(),
                                 TalmoState::inserting(), TalmoState::error(u"broken"_s)};
    for (const auto &state : states) {
        for (const auto &permissions : allPermissions()) {
            QStringList expected;
            if (!permissions.microphone) {
                expected.append(u"Microphone access needed"_s);
            }
            if (!permissions.speech) {
                expected.append(u"Speech recognition access needed"_s);
            }
            if (!permissions.accessibility) {
                expected.append(u"Accessibility access needed"_s);
            }
            EXPECT_EQ(make(state, permissions).warnings, expected) << name(state).toStdString();
        }
    }
}

TEST(MenuContents, idleAndReady)
{
    const auto contents = make(TalmoState::idle(), everything);
    EXPECT_EQ(contents.title, u"Talmo is ready"_s);
    EXPECT_EQ(contents.subtitle, u"Hold fn, or double-tap for hands-free"_s);
    EXPECT_EQ(contents.mainRow, (MenuEntry{u"mic.fill"_s, u"Start Recording"_s, {}, MenuAction::BeginDictation}));
}

TEST(MenuContents, idleWithAPermissionMissing)
{
    for (const auto &permissions : allPermissions()) {
        if (permissions.microphone && permissions.speech && permissions.accessibility) {
            continue;
        }
        const auto contents = make(TalmoState::idle(), permissions);
        EXPECT_EQ(contents.title, u"Talmo needs permissions"_s);
        EXPECT_EQ(contents.subtitle, QString());
        EXPECT_EQ(contents.mainRow.title, u"Start Recording"_s);
        EXPECT_EQ(contents.mainRow.action, MenuAction::BeginDictation);
    }
}

TEST(MenuContents, otherStatesAreIndependentOfPermissions)
{
    struct Row {
        TalmoState state;
        QString title;
        QString subtitle;
        MenuEntry mainRow;
    };
    const Row rows[] = {
        {TalmoState::recording(),
         u"Listening…"_s,
         {},
         {u"stop.fill"_s, u"Stop Recording"_s, {}, MenuAction::EndDictation}},
        {TalmoState::processing(), u"Cleaning up…"_s, {}, {u"sparkles"_s, u"Cleaning up…"_s, {}, MenuAction::None}},
        {TalmoState::inserting(), u"Inserting…"_s, {}, {u"text.cursor"_s, u"Inserting…"_s, {}, MenuAction::None}},
        {TalmoState::error(u"No speech detected."_s),
         u"No speech detected."_s,
         u"Something went wrong"_s,
         {u"mic.fill"_s, u"Start Recording"_s, {}, MenuAction::BeginDictation}},
    };
    for (const auto &row : rows) {
        for (const auto &permissions : allPermissions()) {
            const auto contents = make(row.state, permissions);
            EXPECT_EQ(contents.title, row.title);
            EXPECT_EQ(contents.subtitle, row.subtitle);
            EXPECT_EQ(contents.mainRow, row.mainRow) << contents.mainRow.title.toStdString();
        }
    }
}

TEST(MenuContents, deniedPermissionCountsAsMissing)
{
    const auto contents = MenuContents::make(TalmoState::idle(), SimpleStatus::Denied, SimpleStatus::Denied, true, {});
    EXPECT_EQ(contents.warnings.size(), 2);
}

TEST(MenuContents, subtitleNamesTheKey)
{
    EXPECT_EQ(make(TalmoState::idle(), everything, u"Right Ctrl"_s).subtitle,
              u"Hold Right Ctrl, or double-tap for hands-free"_s);
}

TEST(MenuContents, footerHasExpectedRows)
{
    const auto contents = make(TalmoState::idle(), everything);
    EXPECT_EQ(contents.grant.title, u"Grant Permissions…"_s);
    EXPECT_EQ(contents.settings, (MenuEntry{u"gearshape"_s, u"Settings"_s, u"⌘,"_s, MenuAction::OpenSettings}));
    EXPECT_EQ(contents.quit, (MenuEntry{u"power"_s, u"Quit Talmo"_s, {}, MenuAction::Quit}));
}

TEST(MenuContents, eachStateHasItsMenuBarSymbol)
{
    EXPECT_EQ(menuBarSymbol(TalmoState::idle()), u"mic.circle"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::recording()), u"waveform.circle.fill"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::processing()), u"ellipsis.circle"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::inserting()), u"ellipsis.circle"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::error({})), u"exclamationmark.circle"_s);
}

TEST(MenuContents, pauseShowsUnlessSomethingIsGoingOn)
{
    EXPECT_EQ(menuBarSymbol(TalmoState::idle(), true), u"pause.circle"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::error({}), true), u"pause.circle"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::recording(), true), u"waveform.circle.fill"_s);
    EXPECT_EQ(menuBarSymbol(TalmoState::processing(), true), u"ellipsis.circle"_s);
}

} // namespace talmo::test
