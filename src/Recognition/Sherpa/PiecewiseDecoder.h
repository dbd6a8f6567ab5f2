#pragma once

#include "Recognition/Sherpa/OfflineRecogniser.h"
#include "Recognition/Signal/SpeechPieces.h"

namespace talmo {

/// Recognises a recording piece by piece: each one as soon as a pause has ended it, so that only the last one is left
/// at the end. Its text before that is live text, and becomes the result if nothing more was said.
class PiecewiseDecoder final : public RecordingDecoder {
public:
    PiecewiseDecoder(std::shared_ptr<OfflineRecogniser> recogniser, std::shared_ptr<VoiceActivity> activity,
                     SherpaRecogniser::Recording recording);

    void process(std::span<const std::int16_t> samples) override;
    void finish() override;

private:
    void take(const std::vector<float> &piece, bool isSeen);
    double look(const std::vector<float> &soFar);
    QString recognised(const std::vector<float> &samples) const;

    std::shared_ptr<OfflineRecogniser> m_recogniser;
    SherpaRecogniser::Recording m_recording;
    SpeechPieces m_pieces;
    QString m_lookText; ///< As of the last check of the current piece.
    bool m_isShown = false;
};

} // namespace talmo
