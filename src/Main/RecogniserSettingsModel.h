#pragma once

#include "Recognition/EngineFactories.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/Models/SpeechModels.h"
#include "Settings/RecogniserSettings.h"
#include "Settings/UserDefaults.h"

#include <memory>

namespace talmo {

/// The engines and models of this machine as the settings window shows them. Main thread.
class RecogniserSettingsModel final : public RecogniserSettings {
public:
    RecogniserSettingsModel(std::shared_ptr<EngineRegistry> engines, std::shared_ptr<SpeechModels> models,
                            std::shared_ptr<UserDefaults> defaults, EngineFactories factories);

    QList<Choice> choices() const override;
    QString choice() const override;
    void choose(const QString &id) override;
    QString choiceProblem() const override;

    QList<Model> models() const override;
    QString obstacle() const override;
    std::optional<Installation> installation() const override;
    QString problem() const override { return m_models->problem(); }

    void install(const QString &modelId) override;
    void cancelInstallation() override { m_models->cancel(); }
    void remove(const QString &modelId) override;

private:
    QString titleOf(const QString &name) const;

    std::shared_ptr<EngineRegistry> m_engines;
    std::shared_ptr<SpeechModels> m_models;
    std::shared_ptr<UserDefaults> m_defaults;
    EngineFactories m_factories;
};

} // namespace talmo
