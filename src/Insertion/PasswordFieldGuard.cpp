#include "Insertion/PasswordFieldGuard.h"

#include "Base/CancellableWait.h"
#include "Base/Task.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

PasswordFieldError::PasswordFieldError()
    : Error(
          QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The cursor is in a password field, so nothing was pasted. Choose "
                                                    "“Copy Last Dictation” from the icon's menu.")))
{
}

PasswordFieldGuard::PasswordFieldGuard(std::shared_ptr<TextInsertionService> service,
                                       std::shared_ptr<FocusedField> field, std::shared_ptr<Clock> clock,
                                       std::function<bool()> isOn)
    : m_service(std::move(service)),
      m_field(std::move(field)),
      m_clock(std::move(clock)),
      m_isOn(std::move(isOn))
{
}

QCoro::Task<void> PasswordFieldGuard::insert(QString text)
{
    return insertAfter(m_isOn() ? isPasswordInTime() : makeReadyFuture(false), m_service, text);
}

QCoro::Task<void> PasswordFieldGuard::insertAfter(QFuture<bool> isPassword,
                                                  std::shared_ptr<TextInsertionService> service, QString text)
{
    const bool isRefused = co_await isPassword;
    if (isRefused) {
        throw PasswordFieldError();
    }
    co_await service->insert(text);
}

/// The field is only asked to keep to the limit; this timeout enforces it.
QFuture<bool> PasswordFieldGuard::isPasswordInTime()
{
    const auto answer = Completion<bool>::make();
    const std::stop_source answered;
    logEscapes(takeAnswer(m_field->isPassword(answerTime), answer, answered));
    logEscapes(giveUp(m_clock->sleep(answerTime, answered.get_token()), answer));
    return answer->future();
}

QCoro::Task<void> PasswordFieldGuard::takeAnswer(QFuture<bool> isPassword, Answer answer, std::stop_source answered)
{
    bool value = false;
    try {
        value = co_await isPassword;
    } catch (const std::exception &) {
        value = false; // Unknown.
    }
    answer->finish(value);
    answered.request_stop();
}

QCoro::Task<void> PasswordFieldGuard::giveUp(QFuture<void> timeIsUp, Answer answer)
{
    const bool isDue = co_await isTimeUp(timeIsUp);
    if (isDue) {
        answer->finish(false);
    }
}

} // namespace talmo
