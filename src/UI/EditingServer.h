#pragma once

#include <QString>
#include <QStringList>

namespace talmo {

/// The server and model that edit dictated text, for display.
struct EditingServer {
    /// As the server names it; empty if there is none.
    QString model;
    /// Its address on this machine.
    QString place;
    /// Addresses that are not used because programs of other users listen there.
    QStringList refused;
};

} // namespace talmo
