#pragma once

#include "App/Services/PipelineServices.h"
#include "Recognition/EngineFactories.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/Models/SpeechModels.h"
#include "Recognition/RecogniserChoice.h"
#include "Recognition/Recommendation.h"
#include "Settings/RecogniserSettings.h"
#include "Settings/UserDefaults.h"

#include <memory>

namespace talmo {

/// The engines and models of this machine as the settings window shows them. Main thread.
class RecogniserSettingsModel final : public RecogniserSettings {
public:
    RecogniserSettingsModel(std::shared_ptr<EngineRegistry> engines, std::shared_ptr<SpeechModels> models,
                            std::shared_ptr<UserDefaults> defaults, EngineFactories factories,
                            std::shared_ptr<LocaleSource> locale);

    QList<Choice> choices() const override;
    QString choice() const override;
    void choose(const QString &id) override;
    QList<Choice> liveChoices() const override;
    QString liveChoice() const override;
    void chooseLive(const QString &id) override;
    /// Both at once.
    void choose(const RecogniserChoice &choice);
    QString choiceProblem() const override;

    QList<Model> models() const override;
    QString obstacle() const override;
    std::optional<Installation> installation() const override;
    QString problem() const override { return m_models->problem(); }

    std::optional<Offer> offer() const override;
    void acceptOffer() override;
    void languageChanged() override;

    void install(const QString &modelId) override;
    void cancelInstallation() override { m_models->cancel(); }
    void remove(const QString &modelId) override;

private:
    bool hasOfflineModel() const;
    QString automaticTitle() const;
    QList<Choice> withChosen(QList<Choice> choices, const QString &chosen) const;
    bool isMissing(const QString &chosen) const;
    QString titleOf(const QString &name) const;
    QString titleOf(const ModelEntry &entry) const;
    const std::optional<Recommendation> &recommendation() const;
    std::optional<Recommendation> lookForRecommendation() const;

    std::shared_ptr<EngineRegistry> m_engines;
    std::shared_ptr<SpeechModels> m_models;
    std::shared_ptr<UserDefaults> m_defaults;
    EngineFactories m_factories;
    std::shared_ptr<LocaleSource> m_locale;
    /// As of the last change of engines and models; looking for one reads the disk, and views ask often.
    mutable std::optional<std::optional<Recommendation>> m_recommendation;
};

} // namespace talmo
