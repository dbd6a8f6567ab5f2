#pragma once

#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Settings/LanguageSettings.h"
#include "Settings/RecogniserSettings.h"
#include "Settings/UserDefaults.h"

#include <memory>

namespace talmo {

/// Keeps the language under a key of this platform's. Offers those of the built-in recogniser and of the catalogue.
class LanguageSettingsModel final : public LanguageSettings {
public:
    LanguageSettingsModel(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<SystemLocaleSource> locale,
                          std::shared_ptr<EngineRegistry> engines, std::shared_ptr<RecogniserSettings> recogniser,
                          const ModelCatalogue &catalogue);

    QList<Choice> choices() const override;
    QString choice() const override;
    void choose(const QString &id) override;
    QString problem() const override;
    bool canSetUp() const override;
    void setUp() override;
    void useEnglish() override;

private:
    QList<Choice> languages() const;

    std::shared_ptr<UserDefaults> m_defaults;
    std::shared_ptr<SystemLocaleSource> m_locale;
    std::shared_ptr<EngineRegistry> m_engines;
    std::shared_ptr<RecogniserSettings> m_recogniser;
    QStringList m_ids;
    /// By title. Made when they are first shown: naming and sorting them has no place in the start of the program.
    mutable QList<Choice> m_languages;
};

} // namespace talmo
