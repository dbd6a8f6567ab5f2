#include "Recognition/Recommendation.h"

#include "Recognition/Models/ModelSize.h"

#include <QLocale>
#include <QThread>

namespace talmo {

std::optional<Recommendation> Recommendation::forLocale(const RecogniserInstaller &installer,
                                                        const ModelCatalogue &catalogue, const QString &locale)
{
    const ModelEntry *incomplete = nullptr;
    for (const auto &entry : catalogue.entries()) {
        if (!entry.speaks(locale) || !installer.store().isInstalled(entry.id)) {
            continue;
        }
        if (installer.partsOf(entry, true).empty()) {
            return std::nullopt;
        }
        incomplete = incomplete == nullptr ? &entry : incomplete;
    }
    const ModelEntry *model = incomplete == nullptr ? catalogue.bestFor(locale) : incomplete;
    if (model == nullptr) {
        return std::nullopt;
    }
    return Recommendation{*model, installer.partsOf(*model, true)};
}

QString Recommendation::title() const
{
    return QStringLiteral("%1 (%2)").arg(model.title, languageNames(model.languages));
}

QString Recommendation::size() const
{
    const auto bytes = sizeOf(parts);
    return bytes ? readableSize(*bytes) : QString();
}

QString Recommendation::licences() const
{
    QStringList names;
    for (const auto &part : parts) {
        if (!part.licence.isEmpty() && !names.contains(part.licence)) {
            names.append(part.licence);
        }
    }
    return names.join(QStringLiteral(", "));
}

QString betterRecognition(const ModelCatalogue &catalogue, const RecogniserInstaller &installer, const QString &locale)
{
    const auto missing = Recommendation::forLocale(installer, catalogue, locale);
    if (missing) {
        return QStringLiteral("%1 would be better: %2, licence %3; run “talmoctl setup”.")
            .arg(missing->title(), missing->size(), missing->licences());
    }
    const int processors = QThread::idealThreadCount();
    const ModelEntry *better = catalogue.betterThan(installer.store().installed(), locale, processors);
    if (better == nullptr) {
        return {};
    }
    const Recommendation more{*better, installer.partsOf(*better)};
    return QStringLiteral("%1 is more accurate, and this computer may be fast enough: %2, licence %3; run “talmoctl "
                          "setup --model %4”.")
        .arg(more.title(), more.size(), more.licences(), better->id);
}

QString languageNames(const QStringList &languages)
{
    constexpr qsizetype mostNames = 3;
    if (languages.size() > mostNames) {
        return QStringLiteral("%1 languages").arg(languages.size());
    }
    QStringList names;
    for (const auto &language : languages) {
        const QLocale locale(language);
        names.append(locale.language() == QLocale::C ? language : QLocale::languageToString(locale.language()));
    }
    return names.join(QStringLiteral(", "));
}

} // namespace talmo
