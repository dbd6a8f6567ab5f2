// The real clipboard against other programs, well-behaved and not.

#include "Platform/Linux/X11/PasteFixture.h"
#include "Support/RawSelectionOwner.h"

#include <gmock/gmock.h>

#include <csignal>

namespace talmo::test {

using namespace std::chrono_literals;

TEST_F(XcbPasteboardTest, readsAllOfferedTargetsIncrementallyIfLarge)
{
    const auto owner = otherOwner();
    const auto all = read();
    EXPECT_EQ(dataOf(all, u"text/html"_s), "<b>rich</b> text");
    EXPECT_EQ(dataOf(all, u"UTF8_STRING"_s), u"plain – text"_s.toUtf8());
    EXPECT_EQ(dataOf(all, u"image/x-talmo-test"_s), image());
}

TEST_F(XcbPasteboardTest, snapshotOutlivesOwnerAndIsServedByteForByte)
{
    auto owner = otherOwner();
    const auto items = pasteboard->items();
    ASSERT_TRUE(waitFor(items));
    owner.reset();
    pasteboard->writeItems(items.result());
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_EQ(xclip(u"image/x-talmo-test"_s), image());
    EXPECT_EQ(xclip(u"text/html"_s), "<b>rich</b> text");
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), u"plain – text"_s.toUtf8());
}

TEST(ServerTime, isComparedAcrossItsWrap)
{
    EXPECT_TRUE(isBefore(0xFFFFFFF0, 0x10));
    EXPECT_FALSE(isBefore(0x10, 0xFFFFFFF0));
    EXPECT_TRUE(isBefore(0x7FFFFFFF, 0x80000000));
    EXPECT_FALSE(isBefore(7, 7));
}

TEST_F(XcbPasteboardTest, offersCommonTextTypesMarkedSecret)
{
    pasteboard->setString(u"grün"_s);
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), u"grün"_s.toUtf8());
    EXPECT_EQ(xclip(u"STRING"_s), u"grün"_s.toLatin1());
    EXPECT_EQ(xclip(u"text/plain;charset=utf-8"_s), u"grün"_s.toUtf8());
    EXPECT_EQ(xclip(u"x-kde-passwordManagerHint"_s), "secret");
    EXPECT_THAT(xclip(u"TARGETS"_s).split('\n'),
                testing::IsSupersetOf({"TARGETS", "MULTIPLE", "TIMESTAMP", "UTF8_STRING"}));
    EXPECT_NE(xclip(u"TIMESTAMP"_s), QByteArray());
    pasteboard->setString(u"日本"_s);
    EXPECT_THAT(xclip(u"TARGETS"_s).split('\n'), testing::Not(testing::Contains("STRING")));
}

TEST_F(XcbPasteboardTest, answersMultiple)
{
    pasteboard->setString(u"both"_s);
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    XConnection client;
    auto *connection = client.get();
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t pairs[] = {client.atom("UTF8_STRING"), client.atom("P1"),        client.atom("NO_SUCH"),
                                client.atom("P2"),          client.atom("TIMESTAMP"), client.atom("P3")};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, client.atom("PAIRS"), client.atom("ATOM_PAIR"), 32,
                        6, pairs);
    xcb_convert_selection(connection, window, client.atom("CLIPBOARD"), client.atom("MULTIPLE"), client.atom("PAIRS"),
                          XCB_CURRENT_TIME);
    client.flush();
    const XcbPtr<xcb_generic_event_t> event(xcb_wait_for_event(connection));
    ASSERT_EQ(event->response_type & 0x7f, XCB_SELECTION_NOTIFY);
    const auto get = [&](const char *name) {
        return XcbPtr<xcb_get_property_reply_t>(xcb_get_property_reply(
            connection, xcb_get_property(connection, 0, window, client.atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 100),
            nullptr));
    };
    const auto text = get("P1");
    EXPECT_EQ(QByteArray(static_cast<const char *>(xcb_get_property_value(text.get())),
                         xcb_get_property_value_length(text.get())),
              "both");
    EXPECT_EQ(get("P2")->type, static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    EXPECT_EQ(get("P3")->value_len, 1U);
    const auto answered = get("PAIRS");
    EXPECT_EQ(static_cast<const xcb_atom_t *>(xcb_get_property_value(answered.get()))[3],
              static_cast<xcb_atom_t>(XCB_ATOM_NONE));
}

TEST_F(XcbPasteboardTest, neverConvertsTargetsWithSideEffects)
{
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", {"text", "UTF8_STRING"}},
                                                {"DELETE", {"", "NULL"}},
                                                {"INSERT_SELECTION", {"", "NULL"}},
                                                {"INSERT_PROPERTY", {"", "NULL"}},
                                                {"SAVE_TARGETS", {"", "NULL"}},
                                                {"MULTIPLE", {"", "NULL"}},
                                                {"TIMESTAMP", {"1234", "INTEGER", 32}}});
    EXPECT_EQ(dataOf(read(), u"UTF8_STRING"_s), "text");
    EXPECT_THAT(owner.requestedTargets(), testing::ElementsAre("TARGETS", "UTF8_STRING"));
}

TEST_F(XcbPasteboardTest, skipsOfferedTargetsThatFailToConvert)
{
    const RawSelectionOwner owner("CLIPBOARD", {{"image/png", {"", "", 8, true}},
                                                {"text/html", {"<i>", "text/html"}},
                                                {"NUMBERS", {QByteArray(8, 1), "INTEGER", 32}}});
    const auto all = read();
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0], (PasteboardRepresentation{u"text/html"_s, "<i>", u"text/html"_s, 8}));
    EXPECT_EQ(all[1], (PasteboardRepresentation{u"NUMBERS"_s, QByteArray(8, 1), u"INTEGER"_s, 32}));
}

TEST_F(XcbPasteboardTest, hangingOwnerTimesOutAfter500msKeepingPartialSnapshot)
{
    const RawSelectionOwner owner(
        "CLIPBOARD",
        {{"text/html", {"<i>", "text/html"}}, {"image/png", {"", "", 8, false, true}}, {"never", {"asked", "STRING"}}});
    const auto before = std::chrono::steady_clock::now();
    const auto all = read();
    const auto took = std::chrono::steady_clock::now() - before;
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0].data, "<i>");
    EXPECT_GE(took, 450ms);
    EXPECT_THAT(owner.requestedTargets(), testing::Not(testing::Contains("never")));
    // The next read works.
    pasteboard->setString(u"on"_s);
    EXPECT_EQ(dataOf(read(), u"UTF8_STRING"_s), "on");
}

TEST_F(XcbPasteboardTest, stoppedProgramDoesNotBlock)
{
    const auto owner = otherOwner();
    ::kill(static_cast<pid_t>(owner->processId()), SIGSTOP);
    EXPECT_TRUE(read().isEmpty());
    ::kill(static_cast<pid_t>(owner->processId()), SIGCONT);
}

TEST_F(XcbPasteboardTest, losesOwnershipToAnotherProgram)
{
    pasteboard->setString(u"mine"_s);
    EXPECT_EQ(dataOf(read(), u"UTF8_STRING"_s), "mine");
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", {"theirs", "UTF8_STRING"}}});
    EXPECT_EQ(dataOf(read(), u"UTF8_STRING"_s), "theirs");
}

TEST_F(XcbPasteTest, slowProgramGetsNewTextAndClipboardIsRestored)
{
    openWindow(u"300"_s);
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", {"old", "UTF8_STRING"}}});
    paste(u"new"_s);
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), "old");
}

TEST_F(XcbPasteTest, emptyClipboardIsRestoredToEmpty)
{
    openWindow();
    paste(u"new"_s);
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_TRUE(read().isEmpty());
}

TEST_F(XcbPasteTest, keepsWhatUserCopiesAfterRestoreRequest)
{
    paste(u"new"_s);
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), "new");
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", {"copied", "UTF8_STRING"}}});
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), "copied");
}

TEST_F(XcbPasteTest, secondPasteWaitsForFirstRestore)
{
    openWindow(u"200"_s);
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", {"old", "UTF8_STRING"}}});
    paste(u"one "_s);
    paste(u"two"_s);
    EXPECT_TRUE(window->waitForLine(u"text: one two"_s, 10s));
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), "old");
}

TEST_F(XcbPasteTest, shutdownCompletesPendingRestore)
{
    openWindow(u"300"_s);
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", {"old", "UTF8_STRING"}}});
    paste(u"new"_s);
    ASSERT_TRUE(waitFor(pasteboard->shutDown()));
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), "old");
}

} // namespace talmo::test
