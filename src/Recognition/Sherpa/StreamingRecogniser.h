#pragma once

#include "Recognition/Sherpa/SherpaRecogniser.h"

#include <QByteArray>

#include <cstddef>
#include <memory>
#include <span>

namespace talmo {

/// A model that recognises sound as it arrives.
class StreamingRecogniser final : public SherpaRecogniser, public std::enable_shared_from_this<StreamingRecogniser> {
public:
    class Stream;

    /// Throws Error if the library rejects the model.
    StreamingRecogniser(std::shared_ptr<SherpaLibrary> library, const SherpaModel &model);
    ~StreamingRecogniser() override;
    StreamingRecogniser(const StreamingRecogniser &) = delete;
    StreamingRecogniser &operator=(const StreamingRecogniser &) = delete;

    std::unique_ptr<RecordingDecoder> makeDecoder(Recording recording) override;

    /// Samples of silence that a recording begins with.
    std::size_t lead() const { return m_lead; }
    /// Samples of silence that make the model recognise the last sound.
    std::size_t tail() const { return m_tail; }

private:
    const void *create(const SherpaModel &model);
    std::size_t measureTail();

    std::shared_ptr<SherpaLibrary> m_library;
    bool m_takesHotWords = false;
    /// The model's tokens are upper case, so hot words must be too.
    bool m_wantsCapitals;
    /// A model of several languages is told which one is spoken.
    bool m_takesLanguage;
    const void *m_handle;
    std::size_t m_lead;
    std::size_t m_tail = 0;
};

/// One recording.
class StreamingRecogniser::Stream {
public:
    /// `language`: that of the recording; empty if unknown. Throws Error.
    explicit Stream(const StreamingRecogniser &recogniser, const QStringList &hotWords = {},
                    const QString &language = {});
    ~Stream();
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    /// Samples between -1 and 1, at 16 kHz.
    void accept(std::span<const float> samples);
    /// Whether there is enough audio for the next step.
    bool isReady() const;
    /// Recognises what there is enough of.
    void decode();
    /// No more samples will come.
    void inputFinished();
    /// The text since the last reset.
    QString text() const;
    bool isEndpoint() const;
    void reset();

private:
    const void *create(const QStringList &hotWords) const;

    const StreamingRecogniser &m_recogniser;
    const void *m_handle;
};

} // namespace talmo
