#pragma once

#include "Recognition/Recognisers.h"
#include "Speech/SpeechTranscriptionService.h"

#include <QString>

#include <functional>
#include <memory>

namespace talmo::benchmarks {

/// The embedded engine behind the service that dictations use, in this process.
class EmbeddedRecogniser {
public:
    using OnText = std::function<void(const QString &)>;

    EmbeddedRecogniser();

    /// Recognises a sound file as fast as the engine takes it. Returns the milliseconds from its last sound to the
    /// text.
    double finishing(const QString &file, const OnText &onText = [](const QString &) {});

private:
    std::shared_ptr<SerialExecutor> m_decoder;
    Recognisers m_recognisers;
    std::shared_ptr<SpeechTranscriptionService> m_service;
};

} // namespace talmo::benchmarks
