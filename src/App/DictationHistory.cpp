#include "App/DictationHistory.h"

#include "Base/Task.h"
#include "Insertion/PasswordFieldGuard.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

DictationHistory::DictationHistory(std::shared_ptr<DictationOptions> options)
    : m_options(std::move(options))
{
    // Queued: changes are announced before they are stored.
    connect(
        m_options.get(), &Observable::objectWillChange, this,
        [this] {
            if (!isOn()) {
                clear();
            }
        },
        Qt::QueuedConnection);
}

void DictationHistory::add(const QString &text)
{
    if (isOn() && !text.isEmpty()) {
        publish(m_texts, (QStringList{text} + m_texts).mid(0, mostTexts));
    }
}

void DictationHistory::clear()
{
    if (!m_texts.isEmpty()) {
        publish(m_texts, QStringList());
    }
}

RememberedInsertionService::RememberedInsertionService(std::shared_ptr<TextInsertionService> service,
                                                       std::shared_ptr<FocusedField> field,
                                                       std::shared_ptr<DictationHistory> history)
    : m_service(std::move(service)),
      m_field(std::move(field)),
      m_history(std::move(history))
{
}

QCoro::Task<void> RememberedInsertionService::insert(QString text)
{
    if (!m_history->isOn()) {
        return m_service->insert(text);
    }
    // Asked before the insertion, which may move the focus. Not waited for: a program that hangs must not hold it up.
    return insertAndAdd(m_service, m_field->isPassword(PasswordFieldGuard::answerTime), m_history, text);
}

QCoro::Task<void> RememberedInsertionService::insertAndAdd(std::shared_ptr<TextInsertionService> service,
                                                           QFuture<bool> isPassword,
                                                           std::shared_ptr<DictationHistory> history, QString text)
{
    bool wasRefused = false;
    std::exception_ptr failure;
    try {
        co_await service->insert(text);
    } catch (const PasswordFieldError &) {
        wasRefused = true;
        failure = std::current_exception();
    } catch (...) {
        failure = std::current_exception();
    }
    if (!wasRefused) {
        logEscapes(addUnlessPassword(isPassword, history, text));
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

QCoro::Task<void> RememberedInsertionService::addUnlessPassword(QFuture<bool> isPassword,
                                                                std::shared_ptr<DictationHistory> history, QString text)
{
    bool mayBePassword = true;
    try {
        mayBePassword = co_await isPassword;
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch): unknown, so it may be one.
    }
    if (!mayBePassword) {
        history->add(text);
    }
}

} // namespace talmo
