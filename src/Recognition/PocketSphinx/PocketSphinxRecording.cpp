#include "Recognition/PocketSphinx/PocketSphinxRecording.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

// In samples. So much is enough for the first try to learn a microphone, and so much more for each other one.
constexpr std::size_t firstLearning = std::size_t(RecordingDecoder::sampleRate) * 3 / 2;
constexpr std::size_t learningStep = RecordingDecoder::sampleRate / 2;
/// Who says nothing for so long is not waited for.
constexpr std::size_t longestLearning = std::size_t(RecordingDecoder::sampleRate) * 6;
constexpr std::size_t heldBlock = 2048;

void append(std::vector<std::int16_t> &sound, std::span<const std::int16_t> samples)
{
    sound.insert(sound.end(), samples.begin(), samples.end());
}

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
                                             const MicrophoneKnowledge &microphone, Publish publish)
    : m_pool(std::move(pool)),
      m_memory(microphone.memory),
      m_publish(std::move(publish)),
      m_microphoneName(microphone.currentName ? microphone.currentName() : QString()),
      m_noise(microphone.noiseAround(m_microphoneName)),
      m_reducesNoise(m_noise->isWorthwhile()),
      m_decoder(m_pool->take()),
      m_isLearning(!m_decoder->setCepstralMean(m_memory->recall(soundName()))),
      m_enough(firstLearning)
{
    if (!m_isLearning) {
        beginUtterance();
    }
}

PocketSphinxRecording::~PocketSphinxRecording()
{
    try {
        if (!m_isBroken && m_isInUtterance) {
            m_decoder->endUtterance();
        }
    } catch (const Error &) {
        generalLog().error("the recogniser did not recover and is loaded anew");
        m_isBroken = true;
    }
    if (m_isBroken) {
        m_pool->discard(std::move(m_decoder)); // It is loaded anew for the next recording.
    } else {
        m_pool->giveBack(std::move(m_decoder));
    }
}

void PocketSphinxRecording::process(std::span<const std::int16_t> samples)
{
    m_isBroken = true; // Until this has ended well.
    m_noise->measure(samples);
    const auto withoutNoise = m_noise->reduce(samples);
    if (m_isLearning) {
        learn(samples);
    } else {
        listen(samples, withoutNoise);
    }
    m_isBroken = false;
}

/// Without its noise a microphone sounds like another one.
QString PocketSphinxRecording::soundName() const
{
    return m_reducesNoise ? m_microphoneName + QStringLiteral(" without noise") : m_microphoneName;
}

/// With a microphone that it does not know, the recogniser would need many seconds to adjust, and get the words until
/// then wrong. So the first words are kept until they tell what it sounds like, and only then recognised.
void PocketSphinxRecording::learn(std::span<const std::int16_t> samples)
{
    append(m_held, samples);
    if (m_held.size() < m_enough) {
        return;
    }
    m_enough += learningStep;
    if (learnFromHeld() || m_held.size() >= longestLearning) {
        endLearning();
    }
}

bool PocketSphinxRecording::learnFromHeld()
{
    m_reducesNoise = m_noise->isWorthwhile();
    return m_decoder->learnFrom(m_reducesNoise ? m_noise->reduce(m_held) : m_held);
}

void PocketSphinxRecording::endLearning()
{
    m_isLearning = false;
    beginUtterance();
    const auto held = std::exchange(m_held, {});
    m_learntFrom = held.size();
    for (std::size_t start = 0; start < held.size(); start += heldBlock) {
        const auto block = std::span(held).subspan(start, std::min(heldBlock, held.size() - start));
        listen(block, m_noise->reduce(block)); // Once more, now that the noise is known.
    }
}

void PocketSphinxRecording::listen(std::span<const std::int16_t> samples, std::span<const std::int16_t> withoutNoise)
{
    const auto chosen = m_reducesNoise ? withoutNoise : samples;
    m_decoder->process(chosen);
    m_steadySound.add(samples);
    append(m_utterance, chosen);
    if (!m_reducesNoise) {
        append(m_withoutNoise, withoutNoise);
    }
    const bool isInSpeech = m_decoder->isInSpeech();
    const bool isPause = std::exchange(m_wasInSpeech, isInSpeech) && !isInSpeech;
    if (isPause || isTimeToCut()) {
        publishFinal(); // Settle what was said.
        beginUtterance();
    } else {
        publishVolatile();
    }
}

/// The longer an utterance, the longer takes its end. Who speaks on and on takes breath at times, if only a little.
bool PocketSphinxRecording::isTimeToCut() const
{
    struct Length {
        std::size_t samples;
        int silence; ///< In hundredths of a second.
    };
    constexpr auto second = std::size_t(sampleRate);
    constexpr Length lengths[] = {{8 * second, 8}, {14 * second, 3}};
    return std::any_of(std::begin(lengths), std::end(lengths), [this](const Length &length) {
        return m_utterance.size() > length.samples && m_decoder->trailingSilence() >= length.silence;
    });
}

void PocketSphinxRecording::beginUtterance()
{
    m_decoder->beginUtterance();
    m_isInUtterance = true;
}

/// What the recogniser made of the sound since the last pause; nothing where that was music: it has no way to hear no
/// words in it.
QString PocketSphinxRecording::heard() const
{
    constexpr double onlyMusic = 0.75;
    return m_steadySound.share() > onlyMusic ? QString() : m_decoder->hypothesis();
}

void PocketSphinxRecording::publishVolatile()
{
    const QString text = heard();
    if (!text.isEmpty() && text != m_volatileText) {
        m_volatileText = text;
        m_publish({text, false});
    }
}

void PocketSphinxRecording::publishFinal()
{
    m_decoder->endUtterance();
    m_isInUtterance = false;
    const auto learntFrom = std::exchange(m_learntFrom, 0);
    const bool knowsMoreNow = learntFrom > 0 && m_utterance.size() > 2 * learntFrom;
    if (!m_reducesNoise && m_noise->isWorthwhile()) {
        m_reducesNoise = true; // It has become noisy here.
        m_decoder->learnFrom(m_withoutNoise);
        if (!heard().isEmpty()) {
            m_decoder->processWhole(m_withoutNoise);
        }
    } else if (knowsMoreNow && !heard().isEmpty()) {
        m_decoder->processWhole(m_utterance);
    }
    const QString text = heard();
    m_steadySound.reset();
    m_utterance.clear();
    m_withoutNoise.clear();
    if (!text.isEmpty()) {
        m_hasHeardWords = true;
        m_publish({text, true});
    } else if (!m_volatileText.isEmpty()) {
        m_publish({QString(), false}); // What was shown turned out to be no word.
    }
    m_volatileText.clear();
}

void PocketSphinxRecording::finish()
{
    m_isBroken = true;
    if (m_isLearning) {
        learnFromHeld();
        endLearning();
    }
    if (const auto rest = m_noise->flush(); m_reducesNoise) {
        listen({}, rest);
    }
    publishFinal();
    if (m_hasHeardWords) {
        m_memory->remember(soundName(), m_decoder->cepstralMean());
    } else {
        // What was no speech tells nothing of how speech sounds here.
        m_decoder->setCepstralMean(m_memory->recall(soundName()));
    }
    m_isBroken = false;
}

} // namespace talmo
