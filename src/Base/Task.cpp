#include "Base/Task.h"

#include "Base/Log.h"
#include "Base/SerialExecutor.h"

#include <utility>

namespace talmo {

void TaskHandle::cancel() const
{
    if (m_state) {
        m_state->stop.request_stop();
    }
}

bool TaskHandle::isCancelled() const
{
    return m_state && m_state->stop.stop_requested();
}

QFuture<void> TaskHandle::finished() const
{
    return m_state->finished;
}

TaskHandle launch(SerialExecutor &executor, std::function<QCoro::Task<void>(std::stop_token)> body)
{
    TaskHandle handle;
    handle.m_state = std::make_shared<TaskHandle::State>();
    auto stop = handle.m_state->stop.get_token();
    handle.m_state->finished = executor.run<void>([body = std::move(body), stop] { return body(stop); });
    return handle;
}

QCoro::Task<void> logEscapes(QCoro::Task<void> task)
{
    try {
        co_await task;
    } catch (...) {
        generalLog().error("unexpected error: %s", {localizedDescription(std::current_exception())});
    }
}

} // namespace talmo
