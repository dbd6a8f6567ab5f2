#pragma once

#include "Recognition/Sherpa/StreamingRecogniser.h"

namespace talmo {

/// Recognises a recording while it is spoken.
class StreamingDecoder final : public RecordingDecoder {
public:
    /// Throws Error.
    StreamingDecoder(std::shared_ptr<StreamingRecogniser> recogniser, SherpaRecogniser::Recording recording);

    void process(std::span<const std::int16_t> samples) override;
    void finish() override;

private:
    QString readable();
    void publishFinal(const QString &text);

    std::shared_ptr<StreamingRecogniser> m_recogniser;
    SherpaRecogniser::Recording m_recording;
    StreamingRecogniser::Stream m_stream;
    QString m_rawText;
    QString m_readableText;
    QString m_volatileText;
};

} // namespace talmo
