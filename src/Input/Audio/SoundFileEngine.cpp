#include "Input/Audio/SoundFileEngine.h"

#include "Base/Error.h"

#include <QFile>

#include <sndfile.h>

#include <utility>
#include <vector>

namespace talmo {

namespace {

// Headers may claim anything, and at a sample rate of 1 GHz the trailing silence alone would keep the machine busy.
constexpr int highestRate = 768000;
constexpr int mostChannels = 64;

} // namespace

struct SoundFileEngine::File {
    SF_INFO info{};
    SNDFILE *handle;

    explicit File(const QString &path)
        : handle(sf_open(QFile::encodeName(path).constData(), SFM_READ, &info))
    {
        if (handle == nullptr) {
            throw Error(QStringLiteral("%1: %2").arg(path, QString::fromUtf8(sf_strerror(nullptr))));
        }
        if (info.samplerate < 1 || info.samplerate > highestRate || info.channels < 1 || info.channels > mostChannels) {
            sf_close(handle);
            throw Error(QStringLiteral("%1: %2 channels at %3 Hz are not supported.")
                            .arg(path)
                            .arg(info.channels)
                            .arg(info.samplerate));
        }
    }
    ~File() { sf_close(handle); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
};

SoundFileEngine::SoundFileEngine(const QString &path)
    : m_file(std::make_unique<File>(path))
{
}

SoundFileEngine::~SoundFileEngine() = default;

AudioFormat SoundFileEngine::inputFormat()
{
    const auto &info = m_file->info;
    return {static_cast<double>(info.samplerate), static_cast<quint32>(info.channels), SampleType::Float32};
}

void SoundFileEngine::installTap(quint32 bufferSize, AudioBufferHandler handler)
{
    m_bufferSize = bufferSize;
    m_blocks = std::make_unique<AudioReblocker>(inputFormat(), bufferSize, std::move(handler));
}

void SoundFileEngine::removeTap()
{
    if (m_blocks) {
        // As with a microphone: flushes the last samples out of the converter.
        constexpr double silence = 0.01;
        m_blocks->flush(static_cast<quint32>(inputFormat().sampleRate * silence));
    }
    m_blocks.reset();
}

bool SoundFileEngine::deliverNext()
{
    std::vector<float> samples(static_cast<std::size_t>(m_bufferSize) * inputFormat().channelCount);
    const auto frames = sf_readf_float(m_file->handle, samples.data(), m_bufferSize);
    if (frames <= 0 || !m_blocks) {
        return false;
    }
    m_blocks->append(reinterpret_cast<const char *>(samples.data()), frames * inputFormat().bytesPerFrame());
    return true;
}

} // namespace talmo
