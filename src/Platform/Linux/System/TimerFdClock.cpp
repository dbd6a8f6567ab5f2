#include "Platform/Linux/System/TimerFdClock.h"

#include "Base/Completion.h"
#include "Platform/Linux/System/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <algorithm>
#include <ctime>
#include <memory>
#include <optional>
#include <sys/timerfd.h>

namespace talmo {

namespace {

timespec toTimespec(Duration duration)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    return {static_cast<time_t>(seconds.count()), static_cast<long>((duration - seconds).count())};
}

/// One wait. Lives in the waiting thread and deletes itself there once due or cancelled.
class Sleeper final : public QObject {
public:
    Sleeper(FileDescriptor timer, std::shared_ptr<Completion<void>> completion)
        : m_timer(std::move(timer)),
          m_notifier(m_timer.get(), QSocketNotifier::Read),
          m_completion(std::move(completion))
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
            m_completion->finish();
            end();
        });
    }

    /// A stop may be requested on any thread; the sleeper itself is only accessed on its own.
    void cancelOn(const std::stop_token &stop, const std::stop_token &ending)
    {
        const auto cancel = [this] {
            m_completion->fail(std::make_exception_ptr(Cancelled()));
            QMetaObject::invokeMethod(this, [this] { end(); }, Qt::QueuedConnection);
        };
        m_onStop.emplace(stop, cancel);
        m_onEnding.emplace(ending, cancel);
    }

private:
    void end()
    {
        m_notifier.setEnabled(false);
        deleteLater();
    }

    FileDescriptor m_timer;
    QSocketNotifier m_notifier;
    std::shared_ptr<Completion<void>> m_completion;
    // Last: its destructor waits for a callback running on another thread, which uses the members above.
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
    std::optional<std::stop_callback<std::function<void()>>> m_onEnding;
};

} // namespace

Instant TimerFdClock::now() const
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return Instant(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

QFuture<void> TimerFdClock::sleep(Duration duration, std::stop_token stop)
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    if (stop.stop_requested() || m_ending.stop_requested()) {
        completion->fail(std::make_exception_ptr(Cancelled()));
        return future;
    }
    // A timer set to zero would be disarmed.
    itimerspec timeout{};
    timeout.it_value = toTimespec(std::max(duration, Duration(1)));
    FileDescriptor timer(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC));
    if (!timer || timerfd_settime(timer.get(), 0, &timeout, nullptr) != 0) {
        completion->fail(std::make_exception_ptr(Error(QStringLiteral("Cannot create a timer."))));
        return future;
    }
    auto *sleeper = new Sleeper(std::move(timer), completion);
    sleeper->cancelOn(stop, m_ending.get_token());
    return future;
}

} // namespace talmo
