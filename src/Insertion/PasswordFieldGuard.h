#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Clock.h"
#include "Base/Completion.h"
#include "Base/Error.h"
#include "Insertion/FocusedField.h"

#include <functional>
#include <memory>
#include <stop_token>

namespace talmo {

/// Thrown instead of putting a text into a password field, where nobody could see what it is.
class PasswordFieldError : public Error {
public:
    PasswordFieldError();
};

/// Inserts nothing into a field that says that it is for a password; where that is unknown, it inserts. Main thread.
class PasswordFieldGuard final : public TextInsertionService {
public:
    /// An insertion waits no longer for the field's answer.
    static constexpr Duration answerTime = std::chrono::milliseconds(100);

    /// `isOn` is asked before each insertion.
    PasswordFieldGuard(std::shared_ptr<TextInsertionService> service, std::shared_ptr<FocusedField> field,
                       std::shared_ptr<Clock> clock, std::function<bool()> isOn);

    QCoro::Task<void> insert(QString text) override;

private:
    using Answer = std::shared_ptr<Completion<bool>>;
    static QCoro::Task<void> insertAfter(QFuture<bool> isPassword, std::shared_ptr<TextInsertionService> service,
                                         QString text);
    static QCoro::Task<void> takeAnswer(QFuture<bool> isPassword, Answer answer, std::stop_source answered);
    static QCoro::Task<void> giveUp(QFuture<void> timeIsUp, Answer answer);
    QFuture<bool> isPasswordInTime();

    std::shared_ptr<TextInsertionService> m_service;
    std::shared_ptr<FocusedField> m_field;
    std::shared_ptr<Clock> m_clock;
    std::function<bool()> m_isOn;
};

} // namespace talmo
