#include "Recognition/FileTranscription.h"

#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SoundFileEngine.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

QCoro::Task<FileTranscript> transcribeFile(std::shared_ptr<SpeechTranscriptionService> service,
                                           std::shared_ptr<SerialExecutor> recogniser, QString path, QString language,
                                           TranscriptionService::UpdateHandler onUpdate)
{
    const auto file = std::make_shared<SoundFileEngine>(path);
    const auto recorder = std::make_shared<AudioRecorder>(file);
    const auto failure = std::make_shared<std::exception_ptr>();
    TranscriptionService::ErrorHandler onError = [failure](const std::exception_ptr &error) { *failure = error; };
    co_await service->startTranscription(recorder, language, onUpdate, onError);
    std::int64_t buffers = 0;
    while (file->deliverNext()) {
        ++buffers;
        const auto turn = recogniser->call([] {}); // It runs after every buffer.
        co_await turn;
    }
    FileTranscript transcript;
    transcript.length = std::chrono::nanoseconds(std::chrono::seconds(1)) * buffers * AudioRecorder::bufferSize /
                        static_cast<std::int64_t>(file->inputFormat().sampleRate);
    const auto lastSound = std::chrono::steady_clock::now();
    recorder->stop();
    transcript.text = co_await service->stopTranscription();
    transcript.finishing = std::chrono::steady_clock::now() - lastSound;
    if (*failure) {
        std::rethrow_exception(*failure);
    }
    co_return transcript;
}

} // namespace talmo
