#pragma once

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>

#include <QFuture>

#include <functional>
#include <memory>
#include <stop_token>

namespace talmo {

class SerialExecutor;

/// A launched task that can be cancelled and waited for. An empty handle stands for no task.
class TaskHandle {
public:
    TaskHandle() = default;

    explicit operator bool() const { return m_state != nullptr; }

    /// Requests a stop; the task still has to end by itself. Does nothing on an empty handle.
    void cancel() const;
    bool isCancelled() const;

    /// Finishes when the task has ended, with its error, if any. The handle must not be empty.
    QFuture<void> finished() const;

private:
    friend TaskHandle launch(SerialExecutor &, std::function<QCoro::Task<void>(std::stop_token)>);
    struct State {
        std::stop_source stop;
        QFuture<void> finished;
    };
    std::shared_ptr<State> m_state;
};

/// Launches a task, which begins in a later iteration of the executor's event loop, never within this call. `body` must
/// not be a coroutine itself, only call one. If nothing awaits the handle, the caller has to log errors: see
/// logEscapes().
TaskHandle launch(SerialExecutor &executor, std::function<QCoro::Task<void>(std::stop_token)> body);

/// Adapts a future to a task on the calling thread.
template <typename Value>
QCoro::Task<Value> await(QFuture<Value> future)
{
    co_return co_await future;
}

/// Awaits a task and logs its exception; for tasks that nothing awaits.
QCoro::Task<void> logEscapes(QCoro::Task<void> task);

} // namespace talmo
