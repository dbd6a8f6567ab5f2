#include "Base/AsyncStream.h"

#include "Support/TestLoop.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

namespace talmo::test {

namespace {

using Stream = AsyncStream<int>;

struct Read {
    std::optional<int> value;
    std::exception_ptr error;
    bool isDone = false;
};

Read readNow(const Stream &stream)
{
    Read read;
    stream.next(
        [&read](std::optional<int> value, std::exception_ptr error) { read = {value, std::move(error), true}; });
    return read;
}

} // namespace

TEST(AsyncStream, buffersValuesYieldedBeforeFirstRead)
{
    const auto [stream, continuation] = Stream::make();
    for (int value = 0; value < 1000; ++value) {
        continuation.yield(value);
    }
    for (int value = 0; value < 1000; ++value) {
        ASSERT_EQ(readNow(stream).value, value);
    }
}

TEST(AsyncStream, resumesWaitingReaderOnYield)
{
    const auto [stream, continuation] = Stream::make();
    Read read;
    stream.next([&read](std::optional<int> value, std::exception_ptr) { read = {value, nullptr, true}; });
    EXPECT_FALSE(read.isDone);
    continuation.yield(7);
    EXPECT_TRUE(read.isDone);
    EXPECT_EQ(read.value, 7);
}

TEST(AsyncStream, deliversBufferedValuesAndDropsYieldsAfterFinish)
{
    const auto [stream, continuation] = Stream::make();
    continuation.yield(1);
    continuation.finish();
    continuation.yield(2);
    EXPECT_EQ(readNow(stream).value, 1);
    const Read end = readNow(stream);
    EXPECT_TRUE(end.isDone);
    EXPECT_FALSE(end.value);
    EXPECT_FALSE(end.error);
}

TEST(AsyncStream, finishesWhenLastContinuationIsDestroyed)
{
    auto made = std::make_unique<std::pair<Stream, Stream::Continuation>>(Stream::make());
    const Stream stream = made->first;
    auto copy = std::make_unique<Stream::Continuation>(made->second);
    Read read;
    stream.next([&read](std::optional<int> value, std::exception_ptr) { read = {value, nullptr, true}; });
    made.reset();
    EXPECT_FALSE(read.isDone);
    copy.reset();
    EXPECT_TRUE(read.isDone);
    EXPECT_FALSE(read.value);
}

TEST(AsyncStream, throwsErrorOfFirstFinishOnly)
{
    const auto [stream, continuation] = Stream::make();
    continuation.finish(std::make_exception_ptr(std::runtime_error("broken")));
    continuation.finish();
    auto future = stream.next();
    ASSERT_TRUE(waitFor(future));
    EXPECT_THROW(future.result(), std::runtime_error);
}

TEST(AsyncStream, keepsEachWritersOrderAcrossThreads)
{
    constexpr int writers = 4;
    constexpr int each = 5000;
    std::vector<int> received;
    {
        auto made = std::make_unique<std::pair<Stream, Stream::Continuation>>(Stream::make());
        const Stream stream = made->first;
        std::vector<std::jthread> threads;
        for (int writer = 0; writer < writers; ++writer) {
            threads.emplace_back([writer, continuation = made->second] {
                for (int value = 0; value < each; ++value) {
                    continuation.yield(writer * each + value);
                }
            });
        }
        made.reset();
        // Plain threads without Qt, so that the thread sanitizer sees every synchronisation.
        while (true) {
            std::promise<std::optional<int>> next;
            stream.next([&next](std::optional<int> value, std::exception_ptr) { next.set_value(value); });
            const auto value = next.get_future().get();
            if (!value) {
                break;
            }
            received.push_back(*value);
        }
    }
    ASSERT_EQ(received.size(), static_cast<std::size_t>(writers * each));
    std::vector<int> last(writers, -1);
    for (const int value : received) {
        auto &before = last[static_cast<std::size_t>(value / each)];
        ASSERT_LT(before, value % each);
        before = value % each;
    }
}

} // namespace talmo::test
