#pragma once

#include "Base/Completion.h"

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>

#include <QFuture>
#include <QString>

#include <functional>
#include <memory>
#include <type_traits>

class QObject;
class QThread;

namespace talmo {

/// A queue of work that runs one piece at a time on one thread with an event loop.
///
/// It is re-entrant as actors are: while one call waits in a co_await, the next one runs. Answers come as futures, to
/// be awaited in the caller's thread; a task itself never crosses threads.
class SerialExecutor {
public:
    /// An executor with a thread of its own. Destroying it lets the running piece of work end, drops the rest (their
    /// futures fail with Cancelled) and joins the thread.
    static std::shared_ptr<SerialExecutor> onNewThread(const QString &name);

    /// An executor whose work runs on later turns of the calling thread's event loop.
    static std::shared_ptr<SerialExecutor> onCurrentThread();

    ~SerialExecutor();
    SerialExecutor(const SerialExecutor &) = delete;
    SerialExecutor &operator=(const SerialExecutor &) = delete;

    bool isCurrentThread() const;

    /// The object that lives in the executor's thread: a parent for notifiers and timers.
    QObject *context() const { return m_context; }

    /// Runs `work` on a later turn of the executor's loop. What escapes from it is logged.
    void post(std::function<void()> work);

    /// Runs a plain function there and gives back what it returns or throws.
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

    /// Starts a coroutine there and gives back its result. `makeTask` itself must not be a coroutine: it calls one.
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
        try {
            if constexpr (std::is_void_v<Value>) {
                co_await makeTask();
                completion->finish();
            } else {
                completion->finish(co_await makeTask());
            }
        } catch (...) {
            completion->fail(std::current_exception());
        }
    }

    QThread *m_thread; ///< Owned; null when the executor borrows the thread it was made on.
    QObject *m_context;
};

} // namespace talmo
