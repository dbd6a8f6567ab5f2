#pragma once

#include "Base/Completion.h"

#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace talmo {

/// An unbounded queue between one reader and any number of writers, on any threads.
///
/// The stream ends when finish() is called or its last Continuation is destroyed. Values yielded before the end can
/// still be read; later ones are dropped. Only one next() may be outstanding at a time.
template <typename T>
class AsyncStream {
    struct State {
        using Reader = std::function<void(std::optional<T>, std::exception_ptr)>;

        std::mutex mutex;
        std::deque<T> buffer;
        bool finished = false;
        std::exception_ptr failure;
        Reader reader;

        void yield(T value)
        {
            Reader waiting;
            {
                const std::lock_guard lock(mutex);
                if (finished) {
                    return;
                }
                if (!reader) {
                    buffer.push_back(std::move(value));
                    return;
                }
                waiting = std::exchange(reader, nullptr);
            }
            waiting(std::move(value), nullptr);
        }

        void finish(std::exception_ptr error)
        {
            Reader waiting;
            {
                const std::lock_guard lock(mutex);
                if (finished) {
                    return;
                }
                finished = true;
                failure = std::move(error);
                waiting = std::exchange(reader, nullptr);
            }
            if (waiting) {
                waiting(std::nullopt, failure);
            }
        }

        void next(Reader wanted)
        {
            std::optional<T> value;
            {
                const std::lock_guard lock(mutex);
                if (!buffer.empty()) {
                    value = std::move(buffer.front());
                    buffer.pop_front();
                } else if (!finished) {
                    reader = std::move(wanted);
                    return;
                }
            }
            if (value) {
                wanted(std::move(value), nullptr);
            } else {
                wanted(std::nullopt, failure);
            }
        }
    };

public:
    /// The writing end. Copies share it; destroying the last copy ends the stream.
    class Continuation {
    public:
        void yield(T value) const { m_end->state->yield(std::move(value)); }

        /// Ends the stream, with `error` if there is one. Only the first call has an effect.
        void finish(std::exception_ptr error = nullptr) const { m_end->state->finish(std::move(error)); }

    private:
        friend AsyncStream;
        struct End {
            std::shared_ptr<State> state;
            explicit End(std::shared_ptr<State> of)
                : state(std::move(of))
            {
            }
            End(const End &) = delete;
            End &operator=(const End &) = delete;
            ~End() { state->finish(nullptr); }
        };
        explicit Continuation(std::shared_ptr<State> state)
            : m_end(std::make_shared<End>(std::move(state)))
        {
        }
        std::shared_ptr<End> m_end;
    };

    static std::pair<AsyncStream, Continuation> make()
    {
        auto state = std::make_shared<State>();
        return {AsyncStream(state), Continuation(state)};
    }

    /// Calls `reader` once with the next value, or with nullopt and the stream's error, if any, at the end:
    /// synchronously if that is known already, otherwise on the thread that yields or finishes.
    void next(std::function<void(std::optional<T>, std::exception_ptr)> reader) const
    {
        m_state->next(std::move(reader));
    }

    /// Awaitable form: nullopt at the end; throws the stream's error.
    QFuture<std::optional<T>> next() const
    {
        auto completion = Completion<std::optional<T>>::make();
        m_state->next([completion](std::optional<T> value, std::exception_ptr error) {
            if (error) {
                completion->fail(std::move(error));
            } else {
                completion->finish(std::move(value));
            }
        });
        return completion->future();
    }

private:
    explicit AsyncStream(std::shared_ptr<State> state)
        : m_state(std::move(state))
    {
    }
    std::shared_ptr<State> m_state;
};

} // namespace talmo
