#pragma once

#include "Recognition/Sherpa/SherpaRecogniser.h"
#include "Recognition/Signal/VoiceActivity.h"

#include <QString>

#include <memory>
#include <span>

namespace talmo {

/// A model that recognises an utterance as a whole.
class OfflineRecogniser final : public SherpaRecogniser, public std::enable_shared_from_this<OfflineRecogniser> {
public:
    /// Throws Error if the library is of a version whose structures are not known, or rejects the model.
    OfflineRecogniser(std::shared_ptr<SherpaLibrary> library, SherpaModel model);
    ~OfflineRecogniser() override;
    OfflineRecogniser(const OfflineRecogniser &) = delete;
    OfflineRecogniser &operator=(const OfflineRecogniser &) = delete;

    /// Throws Error if there is no model for voice activity.
    std::unique_ptr<RecordingDecoder> makeDecoder(Recording recording) override;
    /// Recognises whatever it is given, speech or not.
    std::unique_ptr<RecordingDecoder> makeTrialDecoder(Recording recording) override;

    /// `language`: a code such as "en". Throws Error.
    QString transcribe(std::span<const float> samples, const QString &language);

private:
    template <typename Use>
    auto withConfig(Use use) const;
    void speak(const QString &language);
    QString toldFor(const QString &language) const;
    std::shared_ptr<VoiceActivity> voiceActivity();

    std::shared_ptr<SherpaLibrary> m_library;
    SherpaModel m_model;
    /// The language that the library was given; empty if the model detects it.
    QString m_language;
    const void *m_handle = nullptr;
    /// Kept from one recording to the next, since loading it takes a quarter of a second.
    std::shared_ptr<VoiceActivity> m_voiceActivity;
};

} // namespace talmo
