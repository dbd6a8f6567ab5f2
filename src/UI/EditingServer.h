#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace talmo {

/// The server and model that edit dictated text, for display.
struct EditingServer {
    /// As the server names it; empty if there is none.
    QString model;
    /// Its address on this machine.
    QString place;
    /// Addresses that are not used because programs of other users listen there.
    QStringList refused;

    /// The model is too slow for this machine.
    struct Slowness {
        int seconds = 0; ///< What three edits took longer than.
        /// A faster model; its name is empty if there is none to recommend.
        QString fasterModel;
        int fasterMegabytes = 0;
        QString fasterLicence;
    };
    std::optional<Slowness> slowness = std::nullopt;
};

} // namespace talmo
