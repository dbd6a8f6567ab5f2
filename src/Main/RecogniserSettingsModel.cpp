#include "Main/RecogniserSettingsModel.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/Models/ModelSize.h"
#include "Recognition/Recognisers.h"
#include "UI/Style/Wording.h"

#include <algorithm>
#include <utility>

namespace talmo {

RecogniserSettingsModel::RecogniserSettingsModel(std::shared_ptr<EngineRegistry> engines,
                                                 std::shared_ptr<SpeechModels> models,
                                                 std::shared_ptr<UserDefaults> defaults, EngineFactories factories,
                                                 std::shared_ptr<LocaleSource> locale)
    : m_engines(std::move(engines)),
      m_models(std::move(models)),
      m_defaults(std::move(defaults)),
      m_factories(std::move(factories)),
      m_locale(std::move(locale))
{
    for (const Observable *watched :
         {static_cast<const Observable *>(m_engines.get()), static_cast<const Observable *>(m_models.get())}) {
        connect(watched, &Observable::objectWillChange, this, [this] {
            m_recommendation.reset();
            Q_EMIT objectWillChange();
        });
    }
}

QString RecogniserSettingsModel::titleOf(const QString &name) const
{
    const ModelEntry *entry = m_models->catalogue().find(name);
    return entry == nullptr ? name : titleOf(*entry);
}

/// What users can judge comes first, the maker's name last.
QString RecogniserSettingsModel::titleOf(const ModelEntry &entry) const
{
    QStringList words{languageNames(entry.languages)};
    if (const auto &best = recommendation(); best && best->model.id == entry.id) {
        words.append(Wording::text(QT_TRANSLATE_NOOP("Talmo", "recommended")));
    }
    if (const QString size = readableSize(entry); !size.isEmpty()) {
        words.append(size);
    }
    return QStringLiteral("%1 (%2)").arg(words.join(QStringLiteral(", ")), entry.title);
}

QList<RecogniserSettings::Choice> RecogniserSettingsModel::choices() const
{
    QList<Choice> choices{{EngineRegistry::automaticChoice, automaticTitle()},
                          {EngineRegistry::embeddedChoice, Wording::text(EngineFactories::embeddedTitle)}};
    for (const auto &model : m_engines->models()) {
        choices.append({model.name, titleOf(model.name)});
    }
    return withChosen(choices, choice());
}

QList<RecogniserSettings::Choice> RecogniserSettingsModel::withChosen(QList<Choice> choices,
                                                                      const QString &chosen) const
{
    if (std::none_of(choices.begin(), choices.end(), [&chosen](const Choice &each) { return each.id == chosen; })) {
        choices.append({chosen, titleOf(chosen)});
    }
    return choices;
}

bool RecogniserSettingsModel::hasOfflineModel() const
{
    const auto &models = m_engines->models();
    return std::any_of(models.begin(), models.end(),
                       [](const InstalledModel &model) { return model.engine && !model.engine->isStreaming(); });
}

QString RecogniserSettingsModel::automaticTitle() const
{
    return hasOfflineModel() ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Recommended"))
                             : Wording::text(QT_TRANSLATE_NOOP("Talmo", "Automatic (best installed)"));
}

QString RecogniserSettingsModel::choice() const
{
    return RecogniserChoice::of(m_engines->choice()).final;
}

void RecogniserSettingsModel::choose(const QString &id)
{
    auto choice = RecogniserChoice::of(m_engines->choice());
    choice.final = id;
    choose(choice);
}

QList<RecogniserSettings::Choice> RecogniserSettingsModel::liveChoices() const
{
    if (!hasOfflineModel()) {
        return {};
    }
    QList<Choice> choices{{RecogniserChoice::automatic(), automaticTitle()},
                          {RecogniserChoice::none(), Wording::text(QT_TRANSLATE_NOOP("Talmo", "None until you pause"))},
                          {EngineRegistry::embeddedChoice, Wording::text(EngineFactories::embeddedTitle)}};
    for (const auto &model : m_engines->models()) {
        if (model.engine && model.engine->isStreaming()) {
            choices.append({model.name, titleOf(model.name)});
        }
    }
    return withChosen(choices, liveChoice());
}

QString RecogniserSettingsModel::liveChoice() const
{
    return RecogniserChoice::of(m_engines->choice()).live;
}

void RecogniserSettingsModel::chooseLive(const QString &id)
{
    auto choice = RecogniserChoice::of(m_engines->choice());
    choice.live = id;
    choose(choice);
}

void RecogniserSettingsModel::choose(const RecogniserChoice &choice)
{
    m_defaults->set(LinuxSettings::speechEngineKey(), choice.stored());
    generalLog().info("recogniser: %@", {choice.stored()});
    m_engines->choose(choice.stored());
}

QString RecogniserSettingsModel::choiceProblem() const
{
    const QString chosen = choice();
    const auto &models = m_engines->models();
    const auto model = std::find_if(models.begin(), models.end(),
                                    [&chosen](const InstalledModel &each) { return each.name == chosen; });
    if (model != models.end()) {
        return Wording::errorText(model->problem);
    }
    if (isMissing(chosen)) {
        return Wording::text(QT_TRANSLATE_NOOP("Talmo", "This model is not installed; another one is used."));
    }
    if (hasOfflineModel() && isMissing(liveChoice())) {
        return Wording::text(
            QT_TRANSLATE_NOOP("Talmo", "The model for the live text is not installed; text appears when you pause."));
    }
    return {};
}

bool RecogniserSettingsModel::isMissing(const QString &chosen) const
{
    const auto &models = m_engines->models();
    const bool isModel = chosen != EngineRegistry::automaticChoice && chosen != EngineRegistry::embeddedChoice &&
                         chosen != RecogniserChoice::none();
    return isModel && std::none_of(models.begin(), models.end(),
                                   [&chosen](const InstalledModel &each) { return each.name == chosen; });
}

QList<RecogniserSettings::Model> RecogniserSettingsModel::models() const
{
    QList<Model> models;
    const auto &installed = m_engines->models();
    const auto isInstalled = [&installed](const QString &name) {
        return std::any_of(installed.begin(), installed.end(),
                           [&name](const InstalledModel &model) { return model.name == name; });
    };
    for (const auto &entry : m_models->catalogue().entries()) {
        if (!m_factories.support(entry)) {
            continue;
        }
        models.append(
            {entry.id, titleOf(entry.id), entry.gives, entry.licence, entry.licenceAddress, isInstalled(entry.id)});
    }
    for (const auto &model : installed) {
        if (m_models->catalogue().find(model.name) == nullptr) {
            models.append({model.name, model.name, {}, {}, {}, true});
        }
    }
    return models;
}

QString RecogniserSettingsModel::obstacle() const
{
    for (const auto &factory : m_factories.installable) {
        const bool canBeDownloaded =
            !factory.libraryFolder.isEmpty() && m_models->catalogue().libraryOf(factory.engine) != nullptr;
        if (!factory.isLibraryInstalled() && !canBeDownloaded) {
            return Wording::text(factory.missingLibraryMessage);
        }
    }
    return {};
}

std::optional<RecogniserSettings::Installation> RecogniserSettingsModel::installation() const
{
    const auto underWay = m_models->installation();
    if (!underWay) {
        return std::nullopt;
    }
    const auto &progress = underWay->progress;
    const QString description = progress.description([](const char *source) { return Wording::text(source); });
    return Installation{underWay->entry.id, description, progress.share()};
}

const std::optional<Recommendation> &RecogniserSettingsModel::recommendation() const
{
    if (!m_recommendation) {
        m_recommendation = lookForRecommendation();
    }
    return *m_recommendation;
}

/// Nothing is recommended to users who have chosen the built-in recogniser.
std::optional<Recommendation> RecogniserSettingsModel::lookForRecommendation() const
{
    const QString locale = m_locale->currentIdentifier();
    const auto &models = m_engines->models();
    // Until then it is not known which models can be used, and asking would load the library while Talmo starts.
    const bool isChecked = m_engines->modelsChecked().isFinished();
    const bool hasModel = std::any_of(models.begin(), models.end(), [&locale](const InstalledModel &model) {
        return model.engine && model.engine->speaks(locale);
    });
    if (!isChecked || hasModel || m_models->installation() || choice() == EngineRegistry::embeddedChoice) {
        return std::nullopt;
    }
    try {
        return Recommendation::forLocale(m_models->installer(), m_models->catalogue(), locale);
    } catch (const Error &) { // obstacle() says what is wrong.
        return std::nullopt;
    }
}

std::optional<RecogniserSettings::Offer> RecogniserSettingsModel::offer() const
{
    const auto &recommended = recommendation();
    if (!recommended) {
        return std::nullopt;
    }
    const QString what = recommended->size().isEmpty()
                             ? recommended->title()
                             : recommended->title() + QStringLiteral(", ") + recommended->size();
    const QString licences = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Licences: %1"));
    return Offer{QStringLiteral("%1. %2.").arg(what, licences.arg(recommended->licences())), recommended->size()};
}

void RecogniserSettingsModel::acceptOffer()
{
    if (const auto recommended = recommendation()) { // A copy: installing announces changes.
        const QString locale = m_locale->currentIdentifier();
        m_models->install(recommended->model, Recognisers::termsFor(m_models->catalogue(), recommended->model, locale));
    }
}

void RecogniserSettingsModel::languageChanged()
{
    Q_EMIT objectWillChange();
    m_recommendation.reset();
}

void RecogniserSettingsModel::install(const QString &modelId)
{
    if (const ModelEntry *entry = m_models->catalogue().find(modelId)) {
        m_models->install(*entry);
    }
}

void RecogniserSettingsModel::remove(const QString &modelId)
{
    m_models->remove(modelId);
}

} // namespace talmo
