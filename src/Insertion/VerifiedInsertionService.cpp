#include "Insertion/VerifiedInsertionService.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

namespace {

const char *sentence(PasteReceipt::Outcome outcome)
{
    switch (outcome) {
    case PasteReceipt::Outcome::WindowHangs:
        return QT_TRANSLATE_NOOP("Talmo", "The window is not responding. The text is on the clipboard and will be "
                                          "inserted when the window recovers.");
    case PasteReceipt::Outcome::NoWindow:
        return QT_TRANSLATE_NOOP("Talmo",
                                 "No window has keyboard focus. The text is on the clipboard: paste it with %1.");
    case PasteReceipt::Outcome::KeyboardGrabbed:
        return QT_TRANSLATE_NOOP(
            "Talmo", "Another program has grabbed the keyboard. The text is on the clipboard: paste it with %1.");
    case PasteReceipt::Outcome::NoPasteKey:
        return QT_TRANSLATE_NOOP(
            "Talmo",
            "This keyboard layout has no key for pasting. The text is on the clipboard: paste it from a menu.");
    case PasteReceipt::Outcome::CannotType:
        return QT_TRANSLATE_NOOP("Talmo", "Copied: press %1");
    case PasteReceipt::Outcome::WindowChanged:
        return QT_TRANSLATE_NOOP("Talmo", "The active window changed. The text is on the clipboard: paste it with %1.");
    case PasteReceipt::Outcome::ClipboardLost:
        return QT_TRANSLATE_NOOP(
            "Talmo", "Another program replaced the clipboard. Choose “Copy Last Dictation” from the icon's menu.");
    case PasteReceipt::Outcome::Taken:
    case PasteReceipt::Outcome::NotTaken:
        break;
    }
    return QT_TRANSLATE_NOOP("Talmo", "No window accepted the text. It is on the clipboard: paste it with %1.");
}

QString description(const PasteReceipt &receipt)
{
    const QString text = QString::fromUtf8(sentence(receipt.outcome));
    return text.contains(QLatin1String("%1")) ? text.arg(receipt.shortcut) : text;
}

} // namespace

TextNotTakenError::TextNotTakenError(const PasteReceipt &receipt)
    : Error(description(receipt)),
      m_receipt(receipt)
{
}

VerifiedInsertionService::VerifiedInsertionService(std::shared_ptr<TextInsertionService> service,
                                                   std::shared_ptr<PasteWitness> witness)
    : m_service(std::move(service)),
      m_witness(std::move(witness))
{
}

QCoro::Task<void> VerifiedInsertionService::insert(QString text)
{
    return insertAndVerify(m_service, m_witness, text);
}

QCoro::Task<void> VerifiedInsertionService::insertAndVerify(std::shared_ptr<TextInsertionService> service,
                                                            std::shared_ptr<PasteWitness> witness, QString text)
{
    co_await service->insert(text);
    const auto receipt = co_await witness->receipt();
    if (receipt.outcome != PasteReceipt::Outcome::Taken) {
        throw TextNotTakenError(receipt);
    }
}

} // namespace talmo
