#include "Input/Audio/SoundFileEngine.h"

#include "Base/Error.h"
#include "Input/Audio/AudioRecorder.h"
#include "Support/Printing.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sndfile.h>

#include <vector>

namespace talmo::test {

namespace {

constexpr int rate = 44100;

/// Silence of eight frames.
QString writeSilence(const QString &path, int sampleRate, int channels)
{
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    auto *file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    const std::vector<short> samples(std::size_t(8) * static_cast<std::size_t>(channels));
    sf_writef_short(file, samples.data(), 8);
    sf_close(file);
    return path;
}

/// Left rises and right falls, frame by frame.
QString writeStereoFile(const QString &path, int frames)
{
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    auto *file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    std::vector<float> samples;
    for (int frame = 0; frame < frames; ++frame) {
        samples.push_back(float(frame) / float(frames));
        samples.push_back(-float(frame) / float(frames));
    }
    sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return path;
}

} // namespace

TEST(SoundFileEngine, rejectsAbsurdRatesAndChannelCounts)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.wav"_s);
    EXPECT_NO_THROW(SoundFileEngine(writeSilence(path, 768000, 1)));
    EXPECT_THROW(SoundFileEngine(writeSilence(path, 768001, 1)), Error);
    EXPECT_THROW(SoundFileEngine(writeSilence(path, 1'447'051'607, 1)), Error);
    EXPECT_NO_THROW(SoundFileEngine(writeSilence(path, 8000, 64)));
    EXPECT_THROW(SoundFileEngine(writeSilence(path, 8000, 65)), Error);
}

TEST(SoundFileEngine, deliversWholeFileThenSilence)
{
    const QTemporaryDir folder;
    const auto engine = std::make_shared<SoundFileEngine>(writeStereoFile(folder.filePath(u"a.wav"_s), 5000));
    EXPECT_EQ(engine->inputFormat(), (AudioFormat{rate, 2, SampleType::Float32}));
    AudioRecorder recorder(engine);
    std::vector<float> heard;
    recorder.start([&heard](const auto &buffer, const auto &) {
        const auto *samples = reinterpret_cast<const float *>(buffer->data()); // NOLINT
        heard.insert(heard.end(), samples, samples + std::size_t(buffer->frameLength()) * 2);
    });
    int deliveries = 0;
    while (engine->deliverNext()) {
        ++deliveries;
    }
    EXPECT_EQ(deliveries, 3);
    EXPECT_EQ(heard.size(), 2 * 4096U) << "whole buffers until the end";
    recorder.stop();
    ASSERT_EQ(heard.size(), 2 * (5000U + 441U));
    for (std::size_t frame = 0; frame < 5000; ++frame) {
        ASSERT_FLOAT_EQ(heard[2 * frame], float(frame) / 5000.0F);
        ASSERT_FLOAT_EQ(heard[2 * frame + 1], -float(frame) / 5000.0F);
    }
    EXPECT_EQ(heard.back(), 0.0F);
    EXPECT_FALSE(engine->deliverNext());
}

TEST(SoundFileEngine, invalidSoundFileErrorNamesTheFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"b.wav"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("RIFF");
    file.close();
    for (const auto &path : {file.fileName(), folder.filePath(u"none.wav"_s), folder.path()}) {
        try {
            SoundFileEngine engine(path);
            ADD_FAILURE() << path.toStdString();
        } catch (const Error &error) {
            EXPECT_TRUE(error.localizedDescription().startsWith(path)) << error.what();
        }
    }
}

} // namespace talmo::test
