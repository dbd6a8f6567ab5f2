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

    /// Asks the task to stop; it still ends by itself. Does nothing to an empty handle.
    void cancel() const;
    bool isCancelled() const;

    /// Finishes when the task has ended, with its error if it had one. Only for a handle that is not empty.
    QFuture<void> finished() const;

private:
    friend TaskHandle launch(SerialExecutor &, std::function<QCoro::Task<void>(std::stop_token)>);
    struct State {
        std::stop_source stop;
        QFuture<void> finished;
    };
    std::shared_ptr<State> m_state;
};

/// Launches a task: it begins on a later turn of the executor's loop, never inside this call. `body` calls a
/// coroutine and is none itself. An error that nobody can see is the caller's to log: see logEscapes().
TaskHandle launch(SerialExecutor &executor, std::function<QCoro::Task<void>(std::stop_token)> body);

/// A future as a task of the calling thread.
template <typename Value>
QCoro::Task<Value> await(QFuture<Value> future)
{
    co_return co_await future;
}

/// Awaits a task and logs what escapes from it, for tasks whose end nobody waits for.
QCoro::Task<void> logEscapes(QCoro::Task<void> task);

} // namespace talmo
