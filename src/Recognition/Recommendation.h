#pragma once

#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Models/RecogniserInstaller.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace talmo {

/// What to install for better recognition in a language.
struct Recommendation {
    ModelEntry model;
    /// The model and the components that it lacks, in the order of their installation.
    std::vector<ModelEntry> parts;

    /// Nullopt if a usable model of the language is installed, or none is available. Loads the library.
    static std::optional<Recommendation> forLocale(const RecogniserInstaller &installer,
                                                   const ModelCatalogue &catalogue, const QString &locale);

    /// "Kroko (English)"
    QString title() const;
    /// "67 MB"; empty if unknown.
    QString size() const;
    /// Of all parts: "Apache-2.0, CC-BY-SA-4.0"
    QString licences() const;
};

/// What this machine could recognise more accurately with than the models installed, as a line for people; empty if
/// nothing.
QString betterRecognition(const ModelCatalogue &catalogue, const RecogniserInstaller &installer, const QString &locale);

/// "German", "French, English"; codes that Qt does not know stay as they are. Of more than three, only the number.
QString languageNames(const QStringList &languages);

} // namespace talmo
