#include "Recognition/LiveAndFinalEngine.h"

#include "Base/DetailedError.h"
#include "Base/Log.h"

#include <functional>
#include <utility>

namespace talmo {

namespace {

/// Both engines receive the recording. The live one restarts after each stretch that the other one has finished.
/// Stretches end in a pause, so no word is cut.
class LiveAndFinalDecoder final : public RecordingDecoder {
public:
    using Make = std::function<std::unique_ptr<RecordingDecoder>(Publish)>;

    LiveAndFinalDecoder(const Make &makeFinal, Make makeLive, Publish publish)
        : m_makeLive(std::move(makeLive)),
          m_publish(std::move(publish)),
          m_final(makeFinal([this](const SpeechResult &result) { takeFinal(result); }))
    {
        beginLive();
    }

    void process(std::span<const std::int16_t> samples) override
    {
        m_final->process(samples);
        if (std::exchange(m_isStretchFinished, false)) {
            beginLive();
        }
        hearLive(samples);
    }

    /// Does not wait for the live text.
    void finish() override
    {
        m_live.reset();
        m_final->finish();
        if (m_isShown) {
            m_publish({QString(), false});
        }
    }

private:
    void takeFinal(const SpeechResult &result)
    {
        if (result.isFinal) {
            m_isStretchFinished = true;
            m_isShown = false;
            m_publish(result);
        }
    }

    void beginLive()
    {
        m_settled.clear();
        guarded([this] {
            m_live.reset(); // Before the next one is made: some engines have only one decoder.
            m_live = m_makeLive([this](const SpeechResult &result) { takeLive(result); });
        });
    }

    void hearLive(std::span<const std::int16_t> samples)
    {
        if (m_live) {
            guarded([this, samples] { m_live->process(samples); });
        }
    }

    void takeLive(const SpeechResult &result)
    {
        const QString separator = m_settled.isEmpty() || result.text.isEmpty() ? QString() : QStringLiteral(" ");
        const QString text = m_settled + separator + result.text;
        if (result.isFinal) {
            m_settled = text;
        }
        m_isShown = !text.isEmpty();
        m_publish({text, false});
    }

    /// A recording continues without live text.
    template <typename Work>
    void guarded(Work work)
    {
        try {
            work();
        } catch (const Error &error) {
            generalLog().error("no live text: %@", {wholeDescription(error)});
            m_live.reset();
        }
    }

    Make m_makeLive;
    Publish m_publish;
    std::unique_ptr<RecordingDecoder> m_final;
    std::unique_ptr<RecordingDecoder> m_live;
    /// The live engine's final results in this stretch.
    QString m_settled;
    bool m_isStretchFinished = false;
    bool m_isShown = false;
};

} // namespace

LiveAndFinalEngine::LiveAndFinalEngine(std::shared_ptr<SpeechEngine> final,
                                       std::vector<std::shared_ptr<SpeechEngine>> live)
    : m_final(std::move(final)),
      m_live(std::move(live))
{
}

std::shared_ptr<SpeechEngine> LiveAndFinalEngine::liveFor(const QString &locale) const
{
    for (const auto &engine : m_live) {
        if (engine->speaks(locale) && engine->problem().isEmpty()) {
            return engine;
        }
    }
    return nullptr;
}

void LiveAndFinalEngine::setVocabulary(const PersonalVocabulary &vocabulary)
{
    m_final->setVocabulary(vocabulary);
}

std::unique_ptr<RecordingDecoder> LiveAndFinalEngine::makeDecoder(RecordingDecoder::Publish publish)
{
    return makeDecoderFor(m_final->languages().first(), std::move(publish));
}

std::unique_ptr<RecordingDecoder> LiveAndFinalEngine::makeDecoderFor(const QString &locale,
                                                                     RecordingDecoder::Publish publish)
{
    const auto live = liveFor(locale);
    if (!live) {
        return m_final->makeDecoderFor(locale, std::move(publish));
    }
    const auto makerOf = [&locale](const std::shared_ptr<SpeechEngine> &engine) {
        return [engine, locale](RecordingDecoder::Publish take) {
            return engine->makeDecoderFor(locale, std::move(take));
        };
    };
    return std::make_unique<LiveAndFinalDecoder>(makerOf(m_final), makerOf(live), std::move(publish));
}

std::unique_ptr<RecordingDecoder> LiveAndFinalEngine::makeTrialDecoder(RecordingDecoder::Publish publish)
{
    return m_final->makeTrialDecoder(std::move(publish));
}

void LiveAndFinalEngine::warmUpFor(const QString &locale)
{
    m_final->warmUpFor(locale);
    if (const auto live = liveFor(locale)) {
        live->warmUpFor(locale);
    }
}

void LiveAndFinalEngine::unload()
{
    m_final->unload();
}

} // namespace talmo
