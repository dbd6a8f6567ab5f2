#include "Platform/Linux/PocketSphinxAnalyzer.h"

#include "Base/Log.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace talmo {

namespace {

/// A machine too slow to keep up gets this long after the end; then what was decoded until there is the text.
constexpr auto longestFinalisation = std::chrono::seconds(5);

// In samples. So much is enough for the first try to learn a microphone, and so much more for each other one.
constexpr std::size_t firstLearning = std::size_t(PocketSphinxDecoder::sampleRate) * 3 / 2;
constexpr std::size_t learningStep = PocketSphinxDecoder::sampleRate / 2;
/// Who says nothing for so long is not waited for.
constexpr std::size_t longestLearning = std::size_t(PocketSphinxDecoder::sampleRate) * 6;
constexpr std::size_t heldBlock = 2048;

const AudioFormat decoderFormat{PocketSphinxDecoder::sampleRate, 1, SampleType::Int16};

} // namespace

PocketSphinxTranscriber::PocketSphinxTranscriber()
    : PocketSphinxTranscriber(AsyncStream<SpeechResult>::make())
{
}

PocketSphinxTranscriber::PocketSphinxTranscriber(
    std::pair<AsyncStream<SpeechResult>, AsyncStream<SpeechResult>::Continuation> stream)
    : m_results(std::move(stream.first)),
      m_continuation(std::move(stream.second))
{
}

/// The work on the recogniser's thread. It outlives its analyzer until that thread has let go of it.
class PocketSphinxAnalyzer::Recognition : public std::enable_shared_from_this<PocketSphinxAnalyzer::Recognition> {
public:
    Recognition(std::shared_ptr<PocketSphinxTranscriber> transcriber, std::shared_ptr<PocketSphinxDecoderPool> pool,
                MicrophoneKnowledge microphone, std::shared_ptr<SerialExecutor> executor)
        : m_transcriber(std::move(transcriber)),
          m_pool(std::move(pool)),
          m_microphone(std::move(microphone)),
          m_executor(std::move(executor))
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
    void takeDecoder();
    void learn(std::span<const std::int16_t> samples);
    void endLearning();
    void listen(std::span<const std::int16_t> samples);
    void publishVolatile();
    void publishFinal();
    void inputEnded();
    void finish(std::exception_ptr error = nullptr);
    bool isOverdue() const;

    std::shared_ptr<PocketSphinxTranscriber> m_transcriber;
    std::shared_ptr<PocketSphinxDecoderPool> m_pool;
    MicrophoneKnowledge m_microphone;
    std::shared_ptr<SerialExecutor> m_executor;
    std::atomic<bool> m_isAbandoned = false;

    // From here on: the recogniser's thread only.
    std::optional<AsyncStream<AnalyzerInput>> m_input;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
    std::shared_ptr<Completion<void>> m_started;
    std::shared_ptr<Completion<void>> m_finalised;
    std::optional<std::chrono::steady_clock::time_point> m_finaliseDeadline;
    std::unique_ptr<PocketSphinxDecoder> m_decoder;
    bool m_isInputEnded = false;
    bool m_isFinished = false;
    bool m_wasInSpeech = false;
    bool m_hasLoggedFormat = false;
    bool m_isInUtterance = false;
    QString m_microphoneName;
    /// What was said to a microphone that is not known yet, kept until there is enough to know it by.
    bool m_isLearning = false;
    std::vector<std::int16_t> m_held;
    std::size_t m_enough = 0;
    QString m_volatileText;
};

void PocketSphinxAnalyzer::Recognition::onThread(std::function<void(Recognition &)> work)
{
    m_executor->post([self = shared_from_this(), work = std::move(work)] { work(*self); });
}

QFuture<void> PocketSphinxAnalyzer::Recognition::start(AsyncStream<AnalyzerInput> input, const std::stop_token &stop)
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
void PocketSphinxAnalyzer::Recognition::readNext()
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

void PocketSphinxAnalyzer::Recognition::consume(const AnalyzerInput &input)
{
    if (m_isAbandoned) {
        finish();
        return;
    }
    if (isOverdue()) {
        generalLog().error("speech recognition is too slow for this machine; the end of the recording is missing");
        inputEnded();
        return;
    }
    try {
        decode(input);
    } catch (...) {
        finish(std::current_exception());
        return;
    }
    readNext();
}

void PocketSphinxAnalyzer::Recognition::decode(const AnalyzerInput &input)
{
    if (input.buffer->format() != decoderFormat) {
        if (!std::exchange(m_hasLoggedFormat, true)) {
            generalLog().error("the recogniser was given audio in a format it does not know");
        }
        return;
    }
    if (!m_decoder) {
        takeDecoder();
    }
    const auto *samples = reinterpret_cast<const std::int16_t *>(input.buffer->data()); // NOLINT: aligned by contract
    const std::span<const std::int16_t> heard(samples, input.buffer->frameLength());
    if (m_isLearning) {
        learn(heard);
    } else {
        listen(heard);
    }
}

void PocketSphinxAnalyzer::Recognition::takeDecoder()
{
    m_decoder = m_pool->take();
    m_microphoneName = m_microphone.currentName ? m_microphone.currentName() : QString();
    m_isLearning = !m_decoder->setCepstralMean(m_microphone.memory->recall(m_microphoneName));
    m_enough = firstLearning;
    if (!m_isLearning) {
        m_decoder->beginUtterance();
        m_isInUtterance = true;
    }
}

/// With a microphone that it does not know, the recogniser would need many seconds to adjust, and get the words until
/// then wrong. So the first words are kept until they tell what it sounds like, and only then recognised.
void PocketSphinxAnalyzer::Recognition::learn(std::span<const std::int16_t> samples)
{
    m_held.insert(m_held.end(), samples.begin(), samples.end());
    if (m_held.size() < m_enough) {
        return;
    }
    m_enough += learningStep;
    if (m_decoder->learnFrom(m_held) || m_held.size() >= longestLearning) {
        endLearning();
    }
}

void PocketSphinxAnalyzer::Recognition::endLearning()
{
    m_isLearning = false;
    m_decoder->beginUtterance();
    m_isInUtterance = true;
    const auto held = std::exchange(m_held, {});
    for (std::size_t start = 0; start < held.size(); start += heldBlock) {
        listen(std::span(held).subspan(start, std::min(heldBlock, held.size() - start)));
    }
}

void PocketSphinxAnalyzer::Recognition::listen(std::span<const std::int16_t> samples)
{
    m_decoder->process(samples);
    const bool isInSpeech = m_decoder->isInSpeech();
    if (std::exchange(m_wasInSpeech, isInSpeech) && !isInSpeech) {
        publishFinal(); // A pause: settle what was said, so that the end of the recording has little left to do.
        m_decoder->beginUtterance();
        m_isInUtterance = true;
    } else {
        publishVolatile();
    }
}

void PocketSphinxAnalyzer::Recognition::publishVolatile()
{
    const QString text = m_decoder->hypothesis();
    if (!text.isEmpty() && text != m_volatileText && !m_isAbandoned) {
        m_volatileText = text;
        m_transcriber->continuation().yield({text, false});
    }
}

void PocketSphinxAnalyzer::Recognition::publishFinal()
{
    m_decoder->endUtterance();
    m_isInUtterance = false;
    const QString text = m_decoder->hypothesis();
    if (!m_isAbandoned) {
        if (!text.isEmpty()) {
            m_transcriber->continuation().yield({text, true});
        } else if (!m_volatileText.isEmpty()) {
            m_transcriber->continuation().yield({QString(), false}); // What was shown turned out to be no word.
        }
    }
    m_volatileText.clear();
}

void PocketSphinxAnalyzer::Recognition::inputEnded()
{
    m_isInputEnded = true;
    if (m_started) {
        m_started->finish();
    }
    if (!m_isFinished && (m_finalised || m_isAbandoned)) {
        try {
            if (m_decoder && !m_isAbandoned) {
                if (m_isLearning) {
                    m_decoder->learnFrom(m_held);
                    endLearning();
                }
                publishFinal();
                m_microphone.memory->remember(m_microphoneName, m_decoder->cepstralMean());
            }
            finish();
        } catch (...) {
            finish(std::current_exception());
        }
    }
}

QFuture<void> PocketSphinxAnalyzer::Recognition::finalise()
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    const auto deadline = std::chrono::steady_clock::now() + longestFinalisation;
    onThread([completion, deadline](Recognition &self) {
        if (self.m_isFinished) {
            completion->finish();
            return;
        }
        self.m_finalised = completion;
        self.m_finaliseDeadline = deadline;
        if (self.m_isInputEnded) {
            self.inputEnded();
        }
    });
    return future;
}

/// Only flags; what is being decoded ends by itself. Any thread.
QFuture<void> PocketSphinxAnalyzer::Recognition::cancel()
{
    m_isAbandoned = true;
    onThread([](Recognition &self) { self.finish(); });
    return ready();
}

void PocketSphinxAnalyzer::Recognition::finish(std::exception_ptr error)
{
    if (std::exchange(m_isFinished, true)) {
        return;
    }
    m_onStop.reset();
    if (m_decoder) {
        try {
            if (m_isInUtterance) {
                m_decoder->endUtterance();
            }
            if (!error) {
                m_pool->giveBack(std::move(m_decoder));
            }
        } catch (const Error &) {
            generalLog().error("the recogniser did not recover and is loaded anew");
        }
        m_decoder.reset();
    }
    m_transcriber->continuation().finish(std::move(error));
    if (m_started) {
        m_started->finish();
    }
    if (m_finalised) {
        m_finalised->finish();
    }
}

bool PocketSphinxAnalyzer::Recognition::isOverdue() const
{
    return m_finaliseDeadline && std::chrono::steady_clock::now() > *m_finaliseDeadline;
}

PocketSphinxAnalyzer::PocketSphinxAnalyzer(std::shared_ptr<PocketSphinxTranscriber> transcriber,
                                           std::shared_ptr<PocketSphinxDecoderPool> pool,
                                           MicrophoneKnowledge microphone, std::shared_ptr<SerialExecutor> executor)
    : m_recognition(std::make_shared<Recognition>(std::move(transcriber), std::move(pool), std::move(microphone),
                                                  std::move(executor)))
{
}

PocketSphinxAnalyzer::~PocketSphinxAnalyzer()
{
    m_recognition->cancel();
}

QFuture<void> PocketSphinxAnalyzer::start(AsyncStream<AnalyzerInput> input, std::stop_token stop)
{
    return m_recognition->start(std::move(input), stop);
}

QFuture<void> PocketSphinxAnalyzer::finalizeAndFinishThroughEndOfInput()
{
    return m_recognition->finalise();
}

QFuture<void> PocketSphinxAnalyzer::cancelAndFinishNow()
{
    return m_recognition->cancel();
}

} // namespace talmo
