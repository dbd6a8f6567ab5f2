#include "Recognition/PocketSphinx/PocketSphinxRecording.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

// In samples. How much of an utterance may still have to be decoded a second time when it ends: at a pause the user
// keeps speaking, but at the end of the recording the user waits.
constexpr auto longestBehindAtPause = 2 * std::size_t(RecordingDecoder::sampleRate);
constexpr std::size_t longestBehindAtEnd = RecordingDecoder::sampleRate / 2;
/// Enough for the pause in which a request for a list ends.
constexpr std::size_t lengthAfterEnd = RecordingDecoder::sampleRate / 10;
constexpr std::size_t frameLength = RecordingDecoder::sampleRate / 100;

} // namespace

std::shared_ptr<NoiseReduction> MicrophoneKnowledge::noiseAround(const QString &name) const
{
    auto &reduction = (*noise)[name];
    if (!reduction) {
        reduction = std::make_shared<NoiseReduction>();
    }
    return reduction;
}

PocketSphinxRecording::PocketSphinxRecording(std::shared_ptr<PocketSphinxDecoderPool> pool,
                                             const MicrophoneKnowledge &microphone,
                                             std::shared_ptr<VoiceActivity> activity, Publish publish)
    : m_pool(std::move(pool)),
      m_memory(microphone.memory),
      m_transcript(std::move(publish)),
      m_microphoneName(microphone.currentName ? microphone.currentName() : QString()),
      m_noise(microphone.noiseAround(m_microphoneName)),
      m_reducesNoise(m_noise->isWorthwhile()),
      m_decoder(m_pool->take()),
      m_calibration(!m_decoder->setCepstralMean(m_memory->recall(soundName()))),
      m_sound(std::move(activity))
{
    if (!m_calibration.isUnderWay()) {
        beginUtterance();
    }
}

PocketSphinxRecording::~PocketSphinxRecording()
{
    if (m_second) {
        m_pool->discard(m_second->release());
    }
    try {
        if (!m_isBroken && m_isInUtterance) {
            m_decoder->endUtterance();
        }
        if (m_isFinished) {
            prepareNextUtterance();
            learnMicrophone();
        }
    } catch (const Error &) {
        generalLog().error("the decoder did not recover and is reloaded");
        m_isBroken = true;
    }
    if (m_isBroken) {
        m_pool->discard(std::move(m_decoder)); // The next recording loads another.
    } else {
        m_pool->giveBack(std::move(m_decoder));
    }
}

void PocketSphinxRecording::process(std::span<const std::int16_t> samples)
{
    m_isBroken = true; // Until this call succeeds.
    m_noise->measure(samples);
    if (m_calibration.isUnderWay()) {
        withoutNoise(samples); // The noise is measured in the meantime.
        calibrate(samples);
    } else {
        listen(samples);
    }
    m_isBroken = false;
}

/// A microphone has a separate calibration for sound without its noise.
QString PocketSphinxRecording::soundName() const
{
    return m_reducesNoise ? m_microphoneName + QStringLiteral(" without noise") : m_microphoneName;
}

void PocketSphinxRecording::calibrate(std::span<const std::int16_t> samples)
{
    if (m_calibration.hold(samples) && (calibrateFromHeld() || m_calibration.isExhausted())) {
        endCalibration();
    }
}

bool PocketSphinxRecording::calibrateFromHeld()
{
    m_reducesNoise = m_noise->isWorthwhile();
    if (m_reducesNoise) {
        return m_decoder->calibrate(withoutNoise(m_calibration.held()));
    }
    return m_decoder->calibrate(m_calibration.held());
}

void PocketSphinxRecording::endCalibration()
{
    beginUtterance();
    const auto held = m_calibration.finish();
    m_calibratedWith = held.size();
    constexpr std::size_t blockSize = 2048;
    for (std::size_t start = 0; start < held.size(); start += blockSize) {
        // Reduced again, now that the noise is known.
        listen(std::span(held).subspan(start, std::min(blockSize, held.size() - start)));
    }
}

std::vector<std::int16_t> PocketSphinxRecording::withoutNoise(std::span<const std::int16_t> samples)
{
    std::vector<std::int16_t> reduced;
    m_noise->reduce(samples, reduced);
    return reduced;
}

void PocketSphinxRecording::listen(std::span<const std::int16_t> samples)
{
    const auto reduce = [this](std::span<const std::int16_t> all, std::vector<std::int16_t> &reduced) {
        m_noise->reduce(all, reduced);
    };
    m_decoder->process(m_sound.add(samples, reduce, m_reducesNoise));
    hearAgain(samples.size());
    publishOrEnd();
}

void PocketSphinxRecording::publishOrEnd()
{
    if (m_segmenter.endsHere(m_decoder->isInSpeech(), m_decoder->trailingSilence(), m_sound.length())) {
        endUtterance();
        prepareNextUtterance();
        beginUtterance();
    } else {
        m_transcript.publishVolatile(heard());
    }
}

void PocketSphinxRecording::beginUtterance()
{
    m_decoder->beginUtterance();
    m_isInUtterance = true;
}

QString PocketSphinxRecording::heard() const
{
    return m_sound.isWithoutSpeech() ? QString() : m_decoder->hypothesis();
}

void PocketSphinxRecording::endUtterance()
{
    settleSecondHearing(longestBehindAtPause);
    m_decoder->endUtterance();
    m_isInUtterance = false;
    m_transcript.publishFinal(heard());
}

void PocketSphinxRecording::prepareNextUtterance()
{
    if (!m_reducesNoise && m_noise->isWorthwhile()) {
        m_reducesNoise = true;
        m_decoder->calibrate(m_sound.withoutNoise());
    }
    m_sound.clear();
    m_calibratedWith = 0;
}

/// Worthwhile if the noise turned out to be loud, or most of the utterance came after the calibration.
void PocketSphinxRecording::hearAgain(std::size_t newSamples)
{
    const bool isBetterCalibrated = m_calibratedWith > 0 && m_sound.length() > 2 * m_calibratedWith;
    const bool isNoiseFound = !m_reducesNoise && m_noise->isWorthwhile();
    if (!m_second && (isBetterCalibrated || isNoiseFound) && !m_sound.isWithoutSpeech()) {
        beginSecondHearing();
    }
    if (m_second) {
        // It gains two seconds in each. More would keep slow machines from keeping up with the voice.
        constexpr std::size_t pace = 3;
        m_second->advance(soundForSecondHearing(), pace * newSamples);
        if (m_second->behind(soundForSecondHearing().size()) == 0) {
            settleSecondHearing(0);
        }
    }
}

void PocketSphinxRecording::beginSecondHearing()
{
    m_calibratedWith = 0;
    m_secondReducesNoise = m_noise->isWorthwhile();
    m_pool->noteSpeed(*m_decoder);
    auto decoder = m_pool->take();
    decoder->setCepstralMean(m_decoder->cepstralMean());
    decoder->calibrate(soundForSecondHearing());
    m_second.emplace(std::move(decoder));
}

std::span<const std::int16_t> PocketSphinxRecording::soundForSecondHearing() const
{
    return m_secondReducesNoise && !m_reducesNoise ? m_sound.withoutNoise() : m_sound.recognised();
}

/// Takes its result if that is at most so many samples behind, and the first one's otherwise.
void PocketSphinxRecording::settleSecondHearing(std::size_t longestBehind)
{
    if (!m_second) {
        return;
    }
    const auto sound = soundForSecondHearing();
    const auto behind = m_second->behind(sound.size());
    if (behind <= longestBehind) {
        m_second->advance(sound, behind);
        m_pool->discard(std::exchange(m_decoder, m_second->release()));
        if (m_secondReducesNoise && !m_reducesNoise) {
            m_reducesNoise = true;
            m_sound.continueWithoutNoise();
        }
    } else {
        m_pool->discard(m_second->release());
    }
    m_second.reset();
}

/// In samples. A pause goes on through what the search has not reached yet, if that is as quiet as the room.
std::size_t PocketSphinxRecording::pauseAtEnd() const
{
    const auto searched = static_cast<std::size_t>(m_decoder->trailingSilence()) * frameLength;
    const auto ahead = static_cast<std::size_t>(m_decoder->framesAhead()) * frameLength;
    return searched > 0 && m_sound.endsQuietly(ahead, frameLength) ? searched + ahead : searched;
}

/// A pause is the slowest sound to decode, and the user is waiting, so the part of one that has been decoded is not
/// decoded again.
void PocketSphinxRecording::addPause(std::size_t heardPause)
{
    if (heardPause < lengthAfterEnd) {
        m_decoder->process(m_sound.quietest(lengthAfterEnd - heardPause));
    }
}

void PocketSphinxRecording::learnMicrophone()
{
    if (m_transcript.hasDecodedWords()) {
        m_memory->remember(soundName(), m_decoder->cepstralMean());
    } else {
        // Without speech, the calibration would be wrong.
        m_decoder->setCepstralMean(m_memory->recall(soundName()));
    }
}

void PocketSphinxRecording::finish()
{
    m_isBroken = true;
    if (m_calibration.isUnderWay()) {
        calibrateFromHeld();
        endCalibration();
    }
    if (const auto rest = m_noise->flush(); m_reducesNoise) {
        m_decoder->process(rest);
        m_sound.add(rest);
        hearAgain(0);
        publishOrEnd();
    }
    settleSecondHearing(longestBehindAtEnd);
    addPause(pauseAtEnd());
    endUtterance();
    m_isFinished = true;
    m_isBroken = false;
}

} // namespace talmo
