#pragma once

#include "Base/SerialExecutor.h"
#include "Speech/SpeechTranscriptionService.h"

#include <QString>

#include <memory>

namespace talmo {

/// Recognises the speech in a sound file the way a dictation does, as fast as the recogniser, whose thread this is,
/// takes it. Gives back the transcript, possibly empty. Throws what the service, its results or the file say.
QCoro::Task<QString> transcribeFile(std::shared_ptr<SpeechTranscriptionService> service,
                                    std::shared_ptr<SerialExecutor> recogniser, QString path, QString language,
                                    TranscriptionService::UpdateHandler onUpdate);

} // namespace talmo
