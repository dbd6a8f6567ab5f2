#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Error.h"
#include "Insertion/PasteReceipt.h"

#include <memory>

namespace talmo {

/// The text was not read; the message says what the user can do.
class TextNotTakenError : public Error {
public:
    explicit TextNotTakenError(const PasteReceipt &receipt);

    const PasteReceipt &receipt() const { return m_receipt; }

private:
    PasteReceipt m_receipt;
};

/// Completes an insertion only once the frontmost application has read the text; throws TextNotTakenError otherwise.
/// Main thread.
class VerifiedInsertionService final : public TextInsertionService {
public:
    VerifiedInsertionService(std::shared_ptr<TextInsertionService> service, std::shared_ptr<PasteWitness> witness);

    QCoro::Task<void> insert(QString text) override;

private:
    static QCoro::Task<void> insertAndVerify(std::shared_ptr<TextInsertionService> service,
                                             std::shared_ptr<PasteWitness> witness, QString text);

    std::shared_ptr<TextInsertionService> m_service;
    std::shared_ptr<PasteWitness> m_witness;
};

} // namespace talmo
