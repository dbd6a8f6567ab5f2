#pragma once

#include "Recognition/Sherpa/SherpaLibrary.h"
#include "Recognition/Signal/VoiceActivity.h"

#include <QString>

#include <memory>

namespace talmo {

/// Silero's model in the neural engine's library.
class SileroVoiceActivity final : public VoiceActivity {
public:
    /// The model's file: in the folder of a speech model, in a folder "silero-vad" beside that, or where Talmo installs
    /// components. Empty if there is none. `modelFolder`: may be empty.
    static QString find(const QString &modelFolder);

    /// Throws Error if the library or the model cannot be used.
    SileroVoiceActivity(std::shared_ptr<SherpaLibrary> library, const QString &modelPath);
    ~SileroVoiceActivity() override;
    SileroVoiceActivity(const SileroVoiceActivity &) = delete;
    SileroVoiceActivity &operator=(const SileroVoiceActivity &) = delete;

    bool isSpeech(std::span<const float> samples) override;
    void reset() override;

private:
    std::shared_ptr<SherpaLibrary> m_library;
    const void *m_handle;
};

} // namespace talmo
