#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <memory>

namespace talmo {

enum class SampleType { Float32, Int16 };

/// The sample layout of a buffer: frames of interleaved channels.
struct AudioFormat {
    double sampleRate = 0; ///< Hz
    quint32 channelCount = 0;
    SampleType sampleType = SampleType::Float32;

    qsizetype bytesPerFrame() const
    {
        return static_cast<qsizetype>(channelCount) * (sampleType == SampleType::Float32 ? 4 : 2);
    }
    bool operator==(const AudioFormat &) const = default;
};

/// The capture time of a buffer, in nanoseconds of the capturing system's clock.
struct AudioTime {
    qint64 nanoseconds = 0;
};

/// A chunk of audio. Shared once it is filled, and immutable from then on.
class AudioBuffer {
public:
    /// Null if there is not enough memory or the capacity is unreasonable.
    static std::shared_ptr<AudioBuffer> make(const AudioFormat &format, quint32 frameCapacity);

    const AudioFormat &format() const { return m_format; }
    quint32 frameCapacity() const { return m_frameCapacity; }
    quint32 frameLength() const { return m_frameLength; }
    /// Clamped to the capacity.
    void setFrameLength(quint32 frames);

    /// frameCapacity() frames; aligned for any sample type.
    char *data() { return m_samples.data(); }
    const char *data() const { return m_samples.constData(); }
    /// The size of the filled part.
    qsizetype byteLength() const { return static_cast<qsizetype>(m_frameLength) * m_format.bytesPerFrame(); }

    /// The platform's own object behind the buffer; null if the samples are all there is.
    std::shared_ptr<void> nativePart;

private:
    AudioBuffer(const AudioFormat &format, quint32 frameCapacity, QByteArray samples);

    AudioFormat m_format;
    quint32 m_frameCapacity;
    quint32 m_frameLength = 0;
    QByteArray m_samples;
};

} // namespace talmo
