#include "App/InterruptibleCleanupService.h"

#include "Base/Log.h"
#include "Base/Task.h"

#include <utility>

namespace talmo {

InterruptibleCleanupService::InterruptibleCleanupService(std::shared_ptr<CleanupService> service,
                                                         std::function<void()> onGivenUp)
    : m_service(std::move(service)),
      m_onGivenUp(std::move(onGivenUp))
{
}

void InterruptibleCleanupService::setHurried(bool isHurried)
{
    if (std::exchange(m_isHurried, isHurried) || !isHurried) {
        return;
    }
    if (const auto request = m_underway.lock(); request && request->aiCleanupEnabled && !request->text->isDone()) {
        generalLog().info("abandoned the language model's edit; formatting the sentence locally");
        logEscapes(formatLocally(request));
        if (m_onGivenUp) {
            m_onGivenUp();
        }
    }
}

QCoro::Task<QString> InterruptibleCleanupService::cleanup(QString transcript, bool aiCleanupEnabled,
                                                          bool conciseTextEnabled, TextTone textTone,
                                                          QStringList dictionaryWords)
{
    const auto request = std::make_shared<Request>(
        Request{m_service, transcript, aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords});
    m_underway = request;
    const auto text = request->text->future();
    logEscapes(m_isHurried || !aiCleanupEnabled ? formatLocally(request) : edit(request));
    return await<QString>(text);
}

QCoro::Task<void> InterruptibleCleanupService::edit(std::shared_ptr<Request> request)
{
    bool hasFailed = false;
    try {
        const QString edited = co_await request->service->cleanup(
            request->transcript, true, request->conciseTextEnabled, request->textTone, request->dictionaryWords);
        request->text->finish(edited);
    } catch (...) {
        generalLog().error("cleanup failed: %s", {localizedDescription(std::current_exception())});
        hasFailed = true;
    }
    if (hasFailed) {
        co_await formatLocally(request);
    }
}

QCoro::Task<void> InterruptibleCleanupService::formatLocally(std::shared_ptr<Request> request)
{
    try {
        const QString formatted = co_await request->service->cleanup(
            request->transcript, false, request->conciseTextEnabled, request->textTone, request->dictionaryWords);
        request->text->finish(formatted);
    } catch (...) {
        request->text->fail(std::current_exception());
    }
}

} // namespace talmo
