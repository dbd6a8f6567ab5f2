#include "App/Trace/TracedPaste.h"

#include "Support/FakePasteboard.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::HasSubstr;
using testing::Not;
using Outcome = PasteReceipt::Outcome;
using Stage = DictationTrace::Stage;

namespace {

class Witness final : public PasteWitness {
public:
    std::shared_ptr<Completion<PasteReceipt>> answer = Completion<PasteReceipt>::make();
    QFuture<PasteReceipt> receipt() override { return answer->future(); }
    bool holdsEarlierClipboard() const override { return false; }
    QFuture<bool> putEarlierClipboardBack() override { return makeReadyFuture(false); }
};

class TracedPasteTest : public testing::Test {
protected:
    std::shared_ptr<DictationTrace> trace = std::make_shared<DictationTrace>(std::make_shared<ManualClock>());
    std::shared_ptr<FakePasteboard> plain = std::make_shared<FakePasteboard>();
    std::shared_ptr<Witness> witness = std::make_shared<Witness>();
    TracedPasteboard pasteboard{plain, trace};
    TracedKeyPoster poster{std::make_shared<FakeKeyEventPoster>(plain->calls), witness, trace};

    void SetUp() override
    {
        for (const auto stage :
             {Stage::Recording, Stage::Released, Stage::LastAudio, Stage::FinalText, Stage::Cleaned}) {
            trace->note(stage);
        }
    }
    void paste(Outcome outcome)
    {
        pasteboard.beginPaste();
        pasteboard.clearContents();
        pasteboard.setString(u"Hello."_s);
        poster.post({9, true, 0});
        poster.post({9, false, 0});
        witness->answer->finish(PasteReceipt{outcome, {}});
        pasteboard.clearContents();
        pasteboard.writeItems({});
        pasteboard.endPaste();
    }
    std::string table() const { return trace->table().value_or(QString()).toStdString(); }
};

} // namespace

TEST_F(TracedPasteTest, passesEveryCallOnInOrder)
{
    paste(Outcome::Taken);
    EXPECT_THAT(plain->calls, testing::ElementsAre("beginPaste", "clear", "setString Hello.", "key down", "key up",
                                                   "clear", "writeItems 0", "endPaste"));
}

TEST_F(TracedPasteTest, notesPasteUpToRestoredClipboard)
{
    paste(Outcome::Taken);
    EXPECT_THAT(table(), HasSubstr("text on the clipboard"));
    EXPECT_THAT(table(), HasSubstr("paste shortcut posted"));
    EXPECT_THAT(table(), HasSubstr("text read"));
    EXPECT_THAT(table(), HasSubstr("clipboard restored"));
}

TEST_F(TracedPasteTest, unreadTextIsNeitherReadNorRestored)
{
    paste(Outcome::NotTaken);
    EXPECT_THAT(table(), HasSubstr("paste shortcut posted"));
    EXPECT_THAT(table(), Not(HasSubstr("text read")));
    EXPECT_THAT(table(), Not(HasSubstr("clipboard restored")));
}

} // namespace talmo::test
