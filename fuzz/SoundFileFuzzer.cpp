// Sound files of any format, as they are read for recognition.

#include "Base/Error.h"
#include "Fuzzing.h"
#include "Input/Audio/SoundFileEngine.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Speech/FormatConversion.h"

#include <cmath>
#include <cstring>

using namespace talmo;
using fuzz::require;

namespace {

/// The size that dictations use.
constexpr quint32 framesPerBuffer = 4096;
constexpr AudioFormat heard{16000, 1, SampleType::Float32};

class Recording {
public:
    explicit Recording(const AudioFormat &format)
        : m_format(format),
          m_converter(SpeexAudioConverterFactory().make(format, heard))
    {
    }

    void hear(const std::shared_ptr<const AudioBuffer> &buffer)
    {
        require(buffer != nullptr && buffer->format() == m_format);
        require(buffer->frameLength() > 0 && buffer->frameLength() <= framesPerBuffer);
        frames += buffer->frameLength();
        if (m_converter) {
            const auto converted = convertBuffer(buffer, *m_converter, heard);
            require(converted != nullptr);
            checkSamples(*converted);
        }
    }

    quint64 frames = 0;

private:
    static void checkSamples(const AudioBuffer &buffer)
    {
        for (quint32 index = 0; index < buffer.frameLength(); ++index) {
            float sample = 0;
            std::memcpy(&sample, buffer.data() + std::size_t(index) * sizeof(sample), sizeof(sample));
            require(std::isfinite(sample));
        }
    }

    AudioFormat m_format;
    std::unique_ptr<AudioConverter> m_converter;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QString path = fuzz::scratchFolder() + QStringLiteral("/sound.wav");
    fuzz::writeFile(path, {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)});
    try {
        SoundFileEngine engine(path);
        const AudioFormat format = engine.inputFormat();
        require(format.sampleRate >= 1 && format.channelCount >= 1);
        Recording recording(format);
        engine.installTap(framesPerBuffer,
                          [&recording](const auto &buffer, const AudioTime &) { recording.hear(buffer); });
        // Some formats encode minutes of silence in a few bytes.
        constexpr int enough = 16;
        for (int count = 0; count < enough && engine.deliverNext();) {
            ++count;
        }
        const quint64 spoken = recording.frames;
        engine.removeTap();
        require(recording.frames >= spoken);
        require(!engine.deliverNext());
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
    return 0;
}
