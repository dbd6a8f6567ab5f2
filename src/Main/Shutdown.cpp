#include "Main/Shutdown.h"

#include "Base/Log.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

namespace {

/// There was no time to insert the sentence.
QCoro::Task<void> keepOnClipboard(std::shared_ptr<CleanupService> cleanup, std::shared_ptr<Pasteboard> pasteboard,
                                  QString text)
{
    const QString formatted = co_await cleanup->cleanup(text, false, false, TextTone::Standard, {});
    generalLog().info("no time was left to insert the last sentence; it is on the clipboard");
    pasteboard->clearContents();
    pasteboard->setString(formatted);
}

QFuture<void> oneTurn(const std::shared_ptr<SerialExecutor> &executor)
{
    return executor->call([] {});
}

/// Every thread gets to release what the cancelled waits held.
QCoro::Task<void> drain(Executors executors)
{
    constexpr int rounds = 2;
    for (int round = 0; round < rounds; ++round) {
        co_await oneTurn(executors.decoder);
        co_await oneTurn(executors.speech);
        co_await oneTurn(executors.cleanup);
        co_await oneTurn(executors.main);
    }
}

} // namespace

QCoro::Task<void> shutDown(ShutdownParts parts)
{
    const auto services = parts.services;
    services->gestures->close();
    const auto finishing = services->gestures->finishDictation(longestLastDictation);
    const bool isFinished = co_await finishing;
    if (const QString text = TalmoCoordinator::shared().liveTranscript(); !isFinished && !text.isEmpty()) {
        co_await keepOnClipboard(services->cleanup, parts.desktop->pasteboard, text);
    }
    services->recorder->stop();
    co_await services->transcription->cancelTranscription();
    parts.models->cancel();
    co_await parts.desktop->shutDown();
    co_await parts.languageModel->shutDown();
    co_await parts.defaults->written();
    parts.clock->cancelAll();
    co_await drain(parts.executors);
}

} // namespace talmo
