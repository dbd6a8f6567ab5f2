#include "Recognition/EngineAnalyzer.h"

#include "Base/CancellableWait.h"
#include "Base/Log.h"
#include "Base/Task.h"

#include <atomic>
#include <functional>
#include <optional>
#include <utility>

namespace talmo {

namespace {

const AudioFormat decoderFormat{RecordingDecoder::sampleRate, 1, SampleType::Int16};

} // namespace

/// The work on the recogniser's thread. It outlives its analyzer until that thread has released it.
class EngineAnalyzer::Recognition : public std::enable_shared_from_this<EngineAnalyzer::Recognition> {
public:
    Recognition(Results results, MakeRecordingDecoder makeDecoder, std::shared_ptr<SerialExecutor> executor,
                std::shared_ptr<Clock> clock)
        : m_results(std::move(results)),
          m_makeDecoder(std::move(makeDecoder)),
          m_executor(std::move(executor)),
          m_clock(std::move(clock))
    {
    }

    QFuture<void> start(AsyncStream<AnalyzerInput> input, const std::stop_token &stop);
    QFuture<void> finalise();
    QFuture<void> cancel();

private:
    void onThread(std::function<void(Recognition &)> work);
    void readNext();
    void consume(const AnalyzerInput &input);
    void decode(const AnalyzerInput &input);
    void publish(SpeechResult result);
    void inputEnded();
    void finish(std::exception_ptr error = nullptr);
    void noteProgress() { m_progress = m_clock->now(); }
    void giveUp();
    static QCoro::Task<void> watch(std::weak_ptr<Recognition> weakSelf, std::shared_ptr<Clock> clock,
                                   std::shared_ptr<Completion<void>> finalised, std::stop_token stop);

    Results m_results;
    MakeRecordingDecoder m_makeDecoder;
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    std::atomic<bool> m_isAbandoned = false;
    /// When the recogniser's thread got on with this recording, or it was asked to finish it, whichever came last.
    std::atomic<Instant> m_progress;
    std::stop_source m_watchEnd;

    // From here on: the recogniser's thread only.
    std::optional<AsyncStream<AnalyzerInput>> m_input;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
    std::shared_ptr<Completion<void>> m_started;
    std::shared_ptr<Completion<void>> m_finalised;
    std::unique_ptr<RecordingDecoder> m_decoder;
    bool m_isInputEnded = false;
    bool m_isFinished = false;
    bool m_hasLoggedFormat = false;
};

void EngineAnalyzer::Recognition::onThread(std::function<void(Recognition &)> work)
{
    m_executor->post([self = shared_from_this(), work = std::move(work)] { work(*self); });
}

QFuture<void> EngineAnalyzer::Recognition::start(AsyncStream<AnalyzerInput> input, const std::stop_token &stop)
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    onThread([input = std::move(input), stop, completion](Recognition &self) {
        if (self.m_isFinished) {
            completion->finish();
            return;
        }
        self.m_started = completion;
        self.m_input = input;
        // Weak: the token may outlive the recording.
        self.m_onStop.emplace(stop, [weak = self.weak_from_this()] {
            if (const auto strong = weak.lock()) {
                strong->cancel();
            }
        });
        self.readNext();
    });
    return future;
}

/// One buffer, one turn of the thread: a cancel always finds its way in between.
void EngineAnalyzer::Recognition::readNext()
{
    if (!m_input) {
        return;
    }
    m_input->next([self = shared_from_this()](std::optional<AnalyzerInput> input, const std::exception_ptr &) {
        self->onThread([input = std::move(input)](Recognition &recognition) {
            if (input && !recognition.m_isFinished) {
                recognition.consume(*input);
            } else {
                recognition.inputEnded();
            }
        });
    });
}

void EngineAnalyzer::Recognition::consume(const AnalyzerInput &input)
{
    if (m_isAbandoned) {
        finish();
        return;
    }
    try {
        decode(input);
        noteProgress();
    } catch (...) {
        finish(std::current_exception());
        return;
    }
    readNext();
}

void EngineAnalyzer::Recognition::decode(const AnalyzerInput &input)
{
    if (input.buffer->format() != decoderFormat) {
        if (!std::exchange(m_hasLoggedFormat, true)) {
            generalLog().error("the recogniser was given audio in a format it does not know");
        }
        return;
    }
    if (!m_decoder) {
        m_decoder = m_makeDecoder([weak = weak_from_this()](SpeechResult result) {
            if (const auto self = weak.lock()) {
                self->publish(std::move(result));
            }
        });
        noteProgress();
    }
    const auto *samples = reinterpret_cast<const std::int16_t *>(input.buffer->data()); // NOLINT: aligned by contract
    m_decoder->process({samples, input.buffer->frameLength()});
}

void EngineAnalyzer::Recognition::publish(SpeechResult result)
{
    if (!m_isAbandoned) {
        m_results.yield(std::move(result));
    }
}

void EngineAnalyzer::Recognition::inputEnded()
{
    m_isInputEnded = true;
    if (m_started) {
        m_started->finish();
    }
    if (!m_isFinished && (m_finalised || m_isAbandoned)) {
        try {
            if (m_decoder && !m_isAbandoned) {
                m_decoder->finish();
            }
            finish();
        } catch (...) {
            finish(std::current_exception());
        }
    }
}

QFuture<void> EngineAnalyzer::Recognition::finalise()
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    onThread([completion](Recognition &self) {
        if (!self.m_input) {
            self.finish(); // Never started: no end of the input will come.
        }
        if (self.m_isFinished) {
            completion->finish();
            return;
        }
        self.m_finalised = completion;
        if (self.m_isInputEnded) {
            self.inputEnded();
        }
    });
    noteProgress();
    logEscapes(watch(weak_from_this(), m_clock, completion, m_watchEnd.get_token()));
    return future;
}

/// On the thread that finalises, since the recogniser's own may be the one that is stuck.
QCoro::Task<void> EngineAnalyzer::Recognition::watch(std::weak_ptr<Recognition> weakSelf, std::shared_ptr<Clock> clock,
                                                     std::shared_ptr<Completion<void>> finalised, std::stop_token stop)
{
    // The clock runs while the machine is suspended; the recogniser does not. Each check therefore counts for no more
    // than its intended interval, however late it comes.
    Instant seen{};
    if (const auto self = weakSelf.lock()) {
        seen = self->m_progress;
    }
    Duration standstill{};
    while (!finalised->isDone() && standstill < longestStandstill) {
        const auto waiting = clock->sleep(watchInterval, stop);
        const bool isDue = co_await isTimeUp(waiting);
        const auto self = weakSelf.lock();
        if (!isDue || !self) {
            co_return;
        }
        const Instant progress = self->m_progress;
        standstill = progress == seen ? standstill + watchInterval : Duration::zero();
        seen = progress;
    }
    const auto self = weakSelf.lock();
    if (!self || finalised->isDone()) {
        co_return;
    }
    generalLog().error("the recogniser does not get on; the end of the recording is given up");
    self->giveUp();
    finalised->fail(std::make_exception_ptr(Error(QStringLiteral(
        QT_TRANSLATE_NOOP("Talmo", "Speech recognition stopped responding. Copy Last Dictation in the menu has what "
                                   "was heard until then.")))));
}

/// Results from here on come too late.
void EngineAnalyzer::Recognition::giveUp()
{
    m_isAbandoned = true;
    m_results.finish();
}

/// Only sets a flag; the buffer being decoded runs to completion. Any thread.
QFuture<void> EngineAnalyzer::Recognition::cancel()
{
    m_isAbandoned = true;
    onThread([](Recognition &self) { self.finish(); });
    return makeReadyFuture();
}

void EngineAnalyzer::Recognition::finish(std::exception_ptr error)
{
    if (std::exchange(m_isFinished, true)) {
        return;
    }
    m_watchEnd.request_stop();
    m_onStop.reset();
    m_results.finish(std::move(error));
    if (m_started) {
        m_started->finish();
    }
    if (m_finalised) {
        m_finalised->finish();
    }
    m_decoder.reset(); // Nobody waits for what an engine still does to prepare its decoder for the next recording.
}

EngineAnalyzer::EngineAnalyzer(Results results, MakeRecordingDecoder makeDecoder,
                               std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock)
    : m_recognition(std::make_shared<Recognition>(std::move(results), std::move(makeDecoder), std::move(executor),
                                                  std::move(clock)))
{
}

EngineAnalyzer::~EngineAnalyzer()
{
    m_recognition->cancel();
}

QFuture<void> EngineAnalyzer::start(AsyncStream<AnalyzerInput> input, std::stop_token stop)
{
    return m_recognition->start(std::move(input), stop);
}

QFuture<void> EngineAnalyzer::finalizeAndFinishThroughEndOfInput()
{
    return m_recognition->finalise();
}

QFuture<void> EngineAnalyzer::cancelAndFinishNow()
{
    return m_recognition->cancel();
}

} // namespace talmo
