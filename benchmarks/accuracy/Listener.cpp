#include "accuracy/Listener.h"

#include "Base/Error.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SoundFileEngine.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Platform/Linux/Sound/PulseAudioEngine.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Waiting.h"

#include <QCoro/QCoroFuture>

#include <sndfile.h>

#include <algorithm>
#include <chrono>

namespace talmo::accuracy {

namespace {

/// Runs slowly, so that no engine counts as stuck because other programs keep the machine busy.
class SlowClock final : public Clock {
public:
    Instant now() const override { return m_start + (m_clock.now() - m_start) / slowness; }
    QFuture<void> sleep(Duration duration, std::stop_token stop) override
    {
        return m_clock.sleep(duration * slowness, std::move(stop));
    }

private:
    static constexpr int slowness = 20;
    TimerFdClock m_clock;
    Instant m_start = m_clock.now();
};

/// The result or the error of a task: waiting for a task that throws would never return.
struct Outcome {
    FileTranscript transcript;
    std::exception_ptr error;
};

QCoro::Task<Outcome> outcomeOf(QCoro::Task<FileTranscript> task)
{
    Outcome outcome;
    try {
        outcome.transcript = co_await task;
    } catch (...) {
        outcome.error = std::current_exception();
    }
    co_return outcome;
}

Recognisers::Options optionsFor(const QString &engine)
{
    const auto settings =
        LinuxSettings::read(JsonUserDefaults(JsonUserDefaults::standardPath(), SerialExecutor::onCurrentThread()));
    return {{settings.neuralLibrary, {}}, engine, {}};
}

void requireEngine(const EngineRegistry &engines, const QString &name)
{
    const auto &models = engines.models();
    const auto found =
        std::find_if(models.begin(), models.end(), [&name](const InstalledModel &model) { return model.name == name; });
    if (name != EngineRegistry::embeddedChoice && found == models.end()) {
        throw Error(QStringLiteral("Unknown model “%1”; run talmoctl model list for the installed ones.").arg(name));
    }
    if (found != models.end() && !found->problem.isEmpty()) {
        throw Error(found->problem);
    }
}

} // namespace

Listener::Listener(const ListenerOptions &options)
    : m_sound(options.sound),
      m_recogniser(SerialExecutor::onNewThread(QStringLiteral("decoder"))),
      m_recognisers(Recognisers::make(m_recogniser, std::make_shared<SlowClock>(), optionsFor(options.engine))),
      m_service(std::make_shared<SpeechTranscriptionService>(
          m_recognisers.engines->platform(), std::make_shared<SpeexAudioConverterFactory>(),
          SerialExecutor::onNewThread(QStringLiteral("speech")), SerialExecutor::onCurrentThread()))
{
    QCoro::waitFor(await(m_recognisers.engines->modelsChecked()));
    requireEngine(*m_recognisers.engines, options.engine);
    m_recognisers.engines->setWords(options.words);
    const auto soundsLike = Pronunciation::readSoundsLike(QStringLiteral(TALMO_ACCURACY_TEXTS "/sounds-like.txt"));
    m_recogniser->post([engines = m_recognisers.engines->engines(), words = options.words, soundsLike] {
        for (const auto &engine : engines) {
            engine->setVocabulary({words, soundsLike});
        }
    });
}

FileTranscript Listener::hear(const QString &file)
{
    auto task = m_sound
                    ? hearPlayed(file)
                    : transcribeFile(m_service, m_recogniser, file, QStringLiteral("en_US"), [](const QString &) {});
    const Outcome outcome = QCoro::waitFor(outcomeOf(std::move(task)));
    if (outcome.error) {
        std::rethrow_exception(outcome.error);
    }
    return outcome.transcript;
}

/// The model is loaded first, as it is at the press of the key.
PacedTranscript Listener::hearPaced(const QString &file)
{
    m_recognisers.engines->warmUp(QStringLiteral("en_US"));
    QCoro::waitFor(await(m_recogniser->call([] {})));
    const auto pace = std::make_shared<Pace>();
    const Outcome outcome = QCoro::waitFor(outcomeOf(hearInStep(file, pace)));
    if (outcome.error) {
        std::rethrow_exception(outcome.error);
    }
    return pace->finished(outcome.transcript.text);
}

QCoro::Task<FileTranscript> Listener::hearInStep(QString file, std::shared_ptr<Pace> pace)
{
    const auto sound = std::make_shared<SoundFileEngine>(file);
    const auto recorder = std::make_shared<AudioRecorder>(sound);
    const auto ignoreUpdate = [](const QString &) {};
    const auto ignoreError = [](const std::exception_ptr &) {};
    co_await m_service->startTranscription(recorder, QStringLiteral("en_US"), ignoreUpdate, ignoreError);
    const double blockLength = AudioRecorder::bufferSize / sound->inputFormat().sampleRate;
    while (sound->deliverNext()) {
        const auto turn = m_recogniser->call([] {});
        co_await turn;
        pace->tookSound(blockLength);
    }
    recorder->stop();
    FileTranscript transcript;
    transcript.text = co_await m_service->stopTranscription();
    co_return transcript;
}

/// As in a dictation: the microphone is on before the first word, and the key is released with the last one.
QCoro::Task<FileTranscript> Listener::hearPlayed(QString file)
{
    const auto engine = std::make_shared<PulseAudioEngine>();
    const auto recorder = std::make_shared<AudioRecorder>(engine);
    const auto ignoreUpdate = [](const QString &) {};
    const auto ignoreError = [](const std::exception_ptr &) {};
    co_await m_service->startTranscription(recorder, QStringLiteral("en_US"), ignoreUpdate, ignoreError);
    const auto begin = std::chrono::steady_clock::now();
    m_sound->play(file);
    const auto lastSound = std::chrono::steady_clock::now();
    recorder->stop();
    FileTranscript transcript;
    transcript.text = co_await m_service->stopTranscription();
    transcript.finishing = std::chrono::steady_clock::now() - lastSound;
    transcript.length = lastSound - begin;
    co_return transcript;
}

} // namespace talmo::accuracy
