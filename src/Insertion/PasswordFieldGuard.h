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

/// Thrown instead of inserting into a password field, where the user could not see the text.
class PasswordFieldError : public Error {
public:
    PasswordFieldError();
};

/// Inserts nothing into a field that declares itself a password field; inserts if that is unknown. Main thread.
class PasswordFieldGuard final : public TextInsertionService {
public:
    /// The longest that an insertion waits for the field's answer.
    static constexpr Duration answerTime = std::chrono::milliseconds(100);

    /// `isOn` is called before each insertion.
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
