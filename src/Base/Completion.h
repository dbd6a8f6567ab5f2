#pragma once

#include "Base/Error.h"

#include <QFuture>
#include <QPromise>

#include <atomic>
#include <exception>
#include <memory>
#include <utility>

namespace talmo {

/// The producing end of a QFuture. Destroying the last reference to an unfinished one fails the future with Cancelled,
/// since awaiting a future that never finishes hangs or crashes.
///
/// Any thread may finish it; only the first finish() or fail() counts. Shared through std::shared_ptr.
template <typename T>
class Completion {
public:
    Completion() { m_promise.start(); }
    ~Completion() { fail(std::make_exception_ptr(Cancelled())); }
    Completion(const Completion &) = delete;
    Completion &operator=(const Completion &) = delete;

    static std::shared_ptr<Completion> make() { return std::make_shared<Completion>(); }

    QFuture<T> future() { return m_promise.future(); }

    template <typename... Value>
    void finish(Value &&...value)
    {
        if (m_done.exchange(true)) {
            return;
        }
        if constexpr (sizeof...(Value) > 0) {
            m_promise.addResult(std::forward<Value>(value)...);
        }
        m_promise.finish();
    }

    void fail(std::exception_ptr error)
    {
        if (m_done.exchange(true)) {
            return;
        }
        m_promise.setException(std::move(error));
        m_promise.finish();
    }

    bool isDone() const { return m_done.load(); }

private:
    QPromise<T> m_promise;
    std::atomic<bool> m_done = false;
};

/// An already finished future.
template <typename T>
QFuture<std::decay_t<T>> makeReadyFuture(T &&value)
{
    auto completion = Completion<std::decay_t<T>>::make();
    auto future = completion->future();
    completion->finish(std::forward<T>(value));
    return future;
}

inline QFuture<void> makeReadyFuture()
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    completion->finish();
    return future;
}

template <typename T>
QFuture<T> makeFailedFuture(std::exception_ptr error)
{
    auto completion = Completion<T>::make();
    auto future = completion->future();
    completion->fail(std::move(error));
    return future;
}

} // namespace talmo
