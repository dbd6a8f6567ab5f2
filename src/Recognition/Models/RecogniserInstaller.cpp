#include "Recognition/Models/RecogniserInstaller.h"

#include "Recognition/Models/TransferRate.h"

#include <numeric>
#include <utility>

namespace talmo {

namespace {

/// Adds up the progress of parts that are installed one after the other.
class CombinedProgress {
public:
    CombinedProgress(std::size_t parts, std::optional<qint64> total, std::shared_ptr<Clock> clock,
                     ModelInstaller::OnProgress report)
        : m_isSingle(parts == 1),
          m_total(total),
          m_clock(std::move(clock)),
          m_report(std::move(report))
    {
    }

    void show(ModelProgress progress)
    {
        if (progress.phase == ModelProgress::Phase::Downloading) {
            m_part = progress.done;
            m_rate.add(m_clock->now(), m_before + m_part);
            progress.bytesPerSecond = m_rate.perSecond();
        }
        progress.done = m_before + m_part;
        // A single part announces its size itself.
        progress.total = m_total ? m_total : m_isSingle ? progress.total : std::nullopt;
        m_report(progress);
    }
    void endPart()
    {
        m_before += m_part;
        m_part = 0;
    }

private:
    bool m_isSingle;
    std::optional<qint64> m_total;
    std::shared_ptr<Clock> m_clock;
    ModelInstaller::OnProgress m_report;
    TransferRate m_rate;
    qint64 m_before = 0;
    qint64 m_part = 0;
};

} // namespace

RecogniserInstaller::RecogniserInstaller(ModelInstaller models, ModelInstaller components, std::shared_ptr<Clock> clock,
                                         Missing missing)
    : m_models(std::make_shared<ModelInstaller>(std::move(models))),
      m_components(std::make_shared<ModelInstaller>(std::move(components))),
      m_clock(std::move(clock)),
      m_missing(std::move(missing))
{
}

std::vector<ModelEntry> RecogniserInstaller::partsOf(const ModelEntry &model, bool keepsInstalled) const
{
    auto parts = m_missing(model);
    if (!keepsInstalled || !store().isInstalled(model.id)) {
        parts.push_back(model);
    }
    return parts;
}

QCoro::Task<void> RecogniserInstaller::install(ModelEntry model, ModelInstaller::OnProgress onProgress,
                                               std::stop_token stop, InstallationTerms terms) const
{
    // Copies, since this may be destroyed before the task ends.
    const auto models = m_models;
    const auto components = m_components;
    const auto parts = partsOf(model, terms.keepsInstalled);
    const auto total = terms.acceptsRenewed ? std::nullopt : sizeOf(parts);
    const auto combined = std::make_shared<CombinedProgress>(parts.size(), total, m_clock, std::move(onProgress));
    const ModelInstaller::OnProgress show = [combined](const ModelProgress &progress) { combined->show(progress); };
    for (const auto &part : parts) {
        const bool isModel = part.id == model.id && !part.languages.isEmpty();
        if (isModel) {
            co_await installModel(models, part, show, stop, terms);
        } else {
            co_await components->install(part, show, stop);
        }
        combined->endPart();
    }
}

QCoro::Task<void> RecogniserInstaller::installModel(std::shared_ptr<ModelInstaller> models, ModelEntry model,
                                                    ModelInstaller::OnProgress show, std::stop_token stop,
                                                    InstallationTerms terms)
{
    std::optional<ModelTooSlow> slow;
    try {
        co_await models->install(model, show, stop, terms);
    } catch (const ModelTooSlow &error) {
        slow = error;
    }
    if (slow) {
        models->store().noteSlow(model.id);
        throw *slow;
    }
}

std::optional<qint64> sizeOf(const std::vector<ModelEntry> &parts)
{
    return std::accumulate(parts.begin(), parts.end(), std::optional<qint64>(0),
                           [](std::optional<qint64> sum, const ModelEntry &part) {
                               return sum && part.size ? std::optional(*sum + *part.size) : std::nullopt;
                           });
}

} // namespace talmo
