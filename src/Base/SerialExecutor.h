#pragma once

#include "Base/Completion.h"

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>

#include <QFuture>
#include <QString>

#include <exception>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

class QObject;
class QThread;

namespace talmo {

/// Runs work items one at a time on a single thread with an event loop.
///
/// Re-entrant like an actor: while one item is suspended in a co_await, the next one runs. Results are futures, to be
/// awaited on the caller's thread; a task itself never crosses threads.
class SerialExecutor {
public:
    /// An executor with its own thread. Destroying it lets the running item finish, drops the rest (their futures fail
    /// with Cancelled) and joins the thread.
    static std::shared_ptr<SerialExecutor> onNewThread(const QString &name);

    /// An executor that runs work in later iterations of the calling thread's event loop.
    static std::shared_ptr<SerialExecutor> onCurrentThread();

    ~SerialExecutor();
    SerialExecutor(const SerialExecutor &) = delete;
    SerialExecutor &operator=(const SerialExecutor &) = delete;

    bool isCurrentThread() const;

    /// An object that lives on the executor's thread: a parent for notifiers and timers.
    QObject *context() const { return m_context; }

    /// Runs `work` in a later iteration of the executor's event loop. Escaping exceptions are logged.
    void post(std::function<void()> work);

    /// Runs a plain function on the executor; the future receives its result or exception.
    template <typename Function>
    auto call(Function work) -> QFuture<std::invoke_result_t<Function>>
    {
        using Value = std::invoke_result_t<Function>;
        auto completion = Completion<Value>::make();
        post([completion, work = std::move(work)]() mutable {
            try {
                if constexpr (std::is_void_v<Value>) {
                    work();
                    completion->finish();
                } else {
                    completion->finish(work());
                }
            } catch (...) {
                completion->fail(std::current_exception());
            }
        });
        return completion->future();
    }

    /// Starts a coroutine on the executor; the future receives its result. `makeTask` must not be a coroutine itself,
    /// only call one.
    template <typename Value>
    QFuture<Value> run(std::function<QCoro::Task<Value>()> makeTask)
    {
        auto completion = Completion<Value>::make();
        post([completion, makeTask = std::move(makeTask)] { drive<Value>(makeTask, completion); });
        return completion->future();
    }

private:
    explicit SerialExecutor(QThread *thread);

    template <typename Value>
    static QCoro::Task<void> drive(std::function<QCoro::Task<Value>()> makeTask,
                                   std::shared_ptr<Completion<Value>> completion)
    {
        std::exception_ptr failure;
        try {
            if constexpr (std::is_void_v<Value>) {
                co_await makeTask();
                completion->finish();
            } else {
                Value value = co_await makeTask();
                completion->finish(std::move(value));
            }
        } catch (...) {
            failure = std::current_exception();
        }
        if (failure) {
            completion->fail(failure);
        }
    }

    QThread *m_thread; ///< Owned; null if the executor uses the thread it was created on.
    QObject *m_context;
};

} // namespace talmo
