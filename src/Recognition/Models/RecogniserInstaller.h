#pragma once

#include "Recognition/Models/ModelInstaller.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace talmo {

/// Installs a model together with the components that it needs and that are missing, as one download. A thread with an
/// event loop; see ModelInstaller.
class RecogniserInstaller {
public:
    /// The components that a model lacks on this machine. Throws Error if they cannot be obtained.
    using Missing = std::function<std::vector<ModelEntry>(const ModelEntry &model)>;

    RecogniserInstaller(ModelInstaller models, ModelInstaller components, std::shared_ptr<Clock> clock,
                        Missing missing);

    /// What would be downloaded, in this order; the model is the last, unless an installed one is kept. Throws Error if
    /// the model cannot be used here.
    std::vector<ModelEntry> partsOf(const ModelEntry &model, bool keepsInstalled = false) const;

    /// Like ModelInstaller::install(). The progress is that of all parts together. Components stay installed even if
    /// the model cannot be. A model that is too slow is noted in the store.
    QCoro::Task<void> install(ModelEntry model, ModelInstaller::OnProgress onProgress, std::stop_token stop,
                              InstallationTerms terms = {}) const;

    const ModelStore &store() const { return m_models->store(); }

private:
    static QCoro::Task<void> installModel(std::shared_ptr<ModelInstaller> models, ModelEntry model,
                                          ModelInstaller::OnProgress show, std::stop_token stop,
                                          InstallationTerms terms);

    std::shared_ptr<ModelInstaller> m_models;
    std::shared_ptr<ModelInstaller> m_components;
    std::shared_ptr<Clock> m_clock;
    Missing m_missing;
};

/// In bytes; nullopt unless the size of each is known.
std::optional<qint64> sizeOf(const std::vector<ModelEntry> &parts);

} // namespace talmo
