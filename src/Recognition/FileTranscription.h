#pragma once

#include "Base/SerialExecutor.h"
#include "Speech/SpeechTranscriptionService.h"

#include <QString>

#include <chrono>
#include <memory>

namespace talmo {

struct FileTranscript {
    /// Possibly empty.
    QString text;
    /// From the last sound to the text.
    std::chrono::nanoseconds finishing{};
    std::chrono::nanoseconds length{};
};

/// Recognises the speech in a sound file the way a dictation does, as fast as the recogniser, whose thread this is,
/// takes it. Throws the errors of the service, its results or the file.
QCoro::Task<FileTranscript> transcribeFile(std::shared_ptr<SpeechTranscriptionService> service,
                                           std::shared_ptr<SerialExecutor> recogniser, QString path, QString language,
                                           TranscriptionService::UpdateHandler onUpdate);

} // namespace talmo
