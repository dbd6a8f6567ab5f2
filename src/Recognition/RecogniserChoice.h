#pragma once

#include <QString>

namespace talmo {

/// What the user chooses: an engine for the inserted text, and one for the live text if the first one has none. Stored
/// as one string, since they are chosen together.
struct RecogniserChoice {
    /// Neither: the best there is.
    static QString automatic() { return QStringLiteral("automatic"); }
    /// No text is shown before a pause.
    static QString none() { return QStringLiteral("none"); }

    /// The engine's ID, or "automatic".
    QString final = automatic();
    /// The engine's ID, "automatic" or "none".
    QString live = automatic();

    /// "parakeet-v2", or "kroko-en+parakeet-v2" with a live one.
    static RecogniserChoice of(const QString &stored);
    QString stored() const;

    bool operator==(const RecogniserChoice &) const = default;
};

} // namespace talmo
