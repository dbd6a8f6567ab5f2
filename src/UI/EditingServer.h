#pragma once

#include <QString>
#include <QStringList>

namespace talmo {

/// Which server, and which model of its, edits what is dictated; for people to see.
struct EditingServer {
    /// As the server names it; empty when there is none.
    QString model;
    /// Its address on this machine.
    QString place;
    /// Addresses where programs of other users answer, which are not used.
    QStringList refused;
};

} // namespace talmo
