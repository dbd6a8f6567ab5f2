#include "Recognition/ChosenSpeechPlatform.h"

#include "Base/Completion.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

/// A transcriber and whose it is.
class ChosenTranscriber final : public SpeechTranscriber {
public:
    ChosenTranscriber(std::shared_ptr<SpeechPlatform> owner, std::shared_ptr<SpeechTranscriber> transcriber)
        : platform(std::move(owner)),
          inner(std::move(transcriber))
    {
    }

    AsyncStream<SpeechResult> results() const override { return inner->results(); }

    const std::shared_ptr<SpeechPlatform> platform;
    const std::shared_ptr<SpeechTranscriber> inner;
};

const ChosenTranscriber &chosen(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return dynamic_cast<const ChosenTranscriber &>(*transcriber);
}

} // namespace

struct ChosenSpeechPlatform::Choice {
    std::shared_ptr<SpeechPlatform> platform;
    QString locale;
};

ChosenSpeechPlatform::ChosenSpeechPlatform(std::vector<std::shared_ptr<SpeechPlatform>> platforms)
    : m_platforms(std::move(platforms))
{
}

void ChosenSpeechPlatform::setPlatforms(std::vector<std::shared_ptr<SpeechPlatform>> platforms)
{
    const std::scoped_lock lock(m_mutex);
    m_platforms = std::move(platforms);
}

std::vector<std::shared_ptr<SpeechPlatform>> ChosenSpeechPlatform::platforms() const
{
    const std::scoped_lock lock(m_mutex);
    return m_platforms;
}

bool ChosenSpeechPlatform::isAvailable() const
{
    const auto all = platforms();
    return std::any_of(all.begin(), all.end(), [](const auto &each) { return each->isAvailable(); });
}

/// The first that has all it needs, else the first that could have it. The recognisers of this machine answer from what
/// they know: their futures are finished when they are given out.
std::optional<ChosenSpeechPlatform::Choice> ChosenSpeechPlatform::choose(const QString &locale) const
{
    std::optional<Choice> fallback;
    for (const auto &platform : platforms()) {
        const auto supported = platform->isAvailable() ? platform->supportedLocale(locale).result() : std::nullopt;
        if (!supported) {
            continue;
        }
        const auto probe = platform->makeTranscriber(*supported, TranscriberConfiguration::ProgressiveTranscription);
        if (platform->assetStatus(probe).result() == AssetStatus::Installed) {
            return Choice{platform, *supported};
        }
        fallback = fallback ? fallback : std::optional(Choice{platform, *supported});
    }
    return fallback;
}

/// The locale goes through unchanged, since each recogniser has names of its own for what it supports.
QFuture<std::optional<QString>> ChosenSpeechPlatform::supportedLocale(const QString &locale)
{
    return ready(choose(locale) ? std::optional(locale) : std::nullopt);
}

std::shared_ptr<SpeechTranscriber> ChosenSpeechPlatform::makeTranscriber(const QString &supportedLocale,
                                                                         TranscriberConfiguration configuration)
{
    const auto choice = choose(supportedLocale);
    const auto platform = choice ? choice->platform : platforms().back();
    return std::make_shared<ChosenTranscriber>(
        platform, platform->makeTranscriber(choice ? choice->locale : supportedLocale, configuration));
}

QFuture<AssetStatus> ChosenSpeechPlatform::assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return chosen(transcriber).platform->assetStatus(chosen(transcriber).inner);
}

QFuture<std::shared_ptr<AssetInstallationRequest>>
ChosenSpeechPlatform::assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return chosen(transcriber).platform->assetInstallationRequest(chosen(transcriber).inner);
}

QFuture<std::optional<AudioFormat>>
ChosenSpeechPlatform::bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return chosen(transcriber).platform->bestAvailableAudioFormat(chosen(transcriber).inner);
}

std::shared_ptr<SpeechAnalyzer>
ChosenSpeechPlatform::makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return chosen(transcriber).platform->makeAnalyzer(chosen(transcriber).inner);
}

} // namespace talmo
