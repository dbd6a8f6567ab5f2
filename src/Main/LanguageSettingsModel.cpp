#include "Main/LanguageSettingsModel.h"

#include "Base/Log.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/Recommendation.h"
#include "UI/Style/Wording.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

const QString english = QStringLiteral("en");

/// "German", or "German (Austria)" for "de_AT".
QString titleOf(const QString &id)
{
    const QLocale locale(id);
    const QString language = languageNames({id});
    return id.contains(QLatin1Char('_'))
               ? QStringLiteral("%1 (%2)").arg(language, QLocale::territoryToString(locale.territory()))
               : language;
}

QString desktopLanguage()
{
    const QLocale locale = QLocale::system();
    return locale.language() == QLocale::C ? english : locale.name().section(QLatin1Char('_'), 0, 0);
}

} // namespace

LanguageSettingsModel::LanguageSettingsModel(std::shared_ptr<UserDefaults> defaults,
                                             std::shared_ptr<SystemLocaleSource> locale,
                                             std::shared_ptr<EngineRegistry> engines,
                                             std::shared_ptr<RecogniserSettings> recogniser,
                                             const ModelCatalogue &catalogue)
    : m_defaults(std::move(defaults)),
      m_locale(std::move(locale)),
      m_engines(std::move(engines)),
      m_recogniser(std::move(recogniser)),
      m_ids{english}
{
    for (const auto &entry : catalogue.entries()) {
        m_ids += entry.languages;
    }
    m_ids.removeDuplicates();
    connect(m_recogniser.get(), &Observable::objectWillChange, this, &Observable::objectWillChange);
}

QList<LanguageSettings::Choice> LanguageSettingsModel::languages() const
{
    if (m_languages.isEmpty()) {
        for (const auto &id : m_ids) {
            m_languages.append({id, titleOf(id)});
        }
        std::sort(m_languages.begin(), m_languages.end(), [](const Choice &left, const Choice &right) {
            return left.title.localeAwareCompare(right.title) < 0;
        });
    }
    return m_languages;
}

QList<LanguageSettings::Choice> LanguageSettingsModel::choices() const
{
    QList<Choice> choices{
        {QString(), Wording::text(QT_TRANSLATE_NOOP("Talmo", "System language (%1)")).arg(titleOf(desktopLanguage()))}};
    choices += languages();
    const QString chosen = choice();
    if (std::none_of(choices.begin(), choices.end(), [&chosen](const Choice &each) { return each.id == chosen; })) {
        choices.append({chosen, titleOf(chosen)}); // Such as "en_GB", from the settings file.
    }
    return choices;
}

QString LanguageSettingsModel::choice() const
{
    return m_locale->dictationLanguage();
}

void LanguageSettingsModel::choose(const QString &id)
{
    Q_EMIT objectWillChange();
    generalLog().info("language: %@", {id.isEmpty() ? QStringLiteral("the desktop's") : id});
    m_locale->setDictationLanguage(id);
    m_defaults->set(LinuxSettings::dictationLanguageKey(), id);
    // What is offered depends on the language.
    m_recogniser->languageChanged();
}

/// Not before it is known which models can be used.
QString LanguageSettingsModel::problem() const
{
    const QString id = m_locale->currentIdentifier();
    const auto engines = m_engines->engines();
    const bool isSpoken =
        std::any_of(engines.begin(), engines.end(), [&id](const auto &engine) { return engine->speaks(id); });
    if (isSpoken || !m_engines->modelsChecked().isFinished()) {
        return {};
    }
    return Wording::text(QT_TRANSLATE_NOOP("Talmo", "Dictating in %1 needs another recogniser."))
        .arg(titleOf(id.section(QLatin1Char('_'), 0, 0)));
}

bool LanguageSettingsModel::canSetUp() const
{
    return m_recogniser->offer().has_value();
}

void LanguageSettingsModel::setUp()
{
    m_recogniser->acceptOffer();
}

void LanguageSettingsModel::useEnglish()
{
    choose(english);
}

} // namespace talmo
