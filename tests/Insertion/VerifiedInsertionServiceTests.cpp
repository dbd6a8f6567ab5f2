#include "Insertion/VerifiedInsertionService.h"

#include "Base/Completion.h"
#include "Support/Printing.h"

#include <QCoro/QCoroTask>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class Inserter final : public TextInsertionService {
public:
    QCoro::Task<void> insert(QString text) override
    {
        inserted.append(text);
        co_return;
    }
    QStringList inserted;
};

class Witness final : public PasteWitness {
public:
    QFuture<PasteReceipt> receipt() override { return makeReadyFuture(PasteReceipt(answer)); }
    bool holdsEarlierClipboard() const override { return false; }
    QFuture<bool> putEarlierClipboardBack() override { return makeReadyFuture(false); }
    PasteReceipt answer;
};

/// The message shown to the user; empty if the insertion succeeded.
QString outcomeOf(PasteReceipt::Outcome outcome, const QString &shortcut = u"Ctrl+V"_s)
{
    const auto inserter = std::make_shared<Inserter>();
    const auto witness = std::make_shared<Witness>();
    witness->answer = {outcome, shortcut};
    VerifiedInsertionService service(inserter, witness);
    const auto attempt = [](VerifiedInsertionService *verified) -> QCoro::Task<QString> {
        QString message;
        try {
            co_await verified->insert(u"text"_s);
        } catch (const TextNotTakenError &error) {
            message = error.localizedDescription();
        }
        co_return message;
    };
    const QString told = QCoro::waitFor(attempt(&service));
    EXPECT_EQ(inserter->inserted, QStringList{u"text"_s});
    return told;
}

} // namespace

TEST(VerifiedInsertionService, succeedsWhenTextWasRead)
{
    EXPECT_EQ(outcomeOf(PasteReceipt::Outcome::Taken), QString());
}

TEST(VerifiedInsertionService, unreadTextErrorExplainsHowToPasteIt)
{
    EXPECT_EQ(outcomeOf(PasteReceipt::Outcome::NotTaken),
              u"No window accepted the text. It is on the clipboard: paste it with Ctrl+V."_s);
    EXPECT_EQ(outcomeOf(PasteReceipt::Outcome::NotTaken, u"Ctrl+Shift+V"_s),
              u"No window accepted the text. It is on the clipboard: paste it with Ctrl+Shift+V."_s);
}

TEST(VerifiedInsertionService, hasDistinctMessageForEachFailure)
{
    QStringList told;
    for (const auto outcome :
         {PasteReceipt::Outcome::NotTaken, PasteReceipt::Outcome::WindowHangs, PasteReceipt::Outcome::NoWindow,
          PasteReceipt::Outcome::KeyboardGrabbed, PasteReceipt::Outcome::NoPasteKey, PasteReceipt::Outcome::CannotType,
          PasteReceipt::Outcome::WindowChanged, PasteReceipt::Outcome::ClipboardLost}) {
        told.append(outcomeOf(outcome));
        EXPECT_FALSE(told.last().contains(u'%')) << told.last().toStdString();
        EXPECT_LE(told.last().size(), 115) << "more than the card's two lines";
    }
    EXPECT_EQ(told.removeDuplicates(), 0);
}

} // namespace talmo::test
