#pragma once

#include "Base/Observable.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace talmo {

/// For the settings window, on systems with several recognisers: which one is used, and the models available for them.
/// Announces every change. Main thread.
class RecogniserSettings : public Observable {
    Q_OBJECT

public:
    struct Choice {
        QString id;
        QString title;
    };
    struct Model {
        QString id;
        QString title;
        /// Its features and its size.
        QString detail;
        QString licence;
        /// May be empty.
        QUrl licenceAddress;
        bool isInstalled = false;
    };
    struct Installation {
        QString modelId;
        /// "Downloading: 12 of 120 MB"
        QString description;
        /// From 0 to 1; nullopt while unknown.
        std::optional<double> share;
    };

    using Observable::Observable;

    /// The available choices; the first one is automatic.
    virtual QList<Choice> choices() const = 0;
    virtual QString choice() const = 0;
    /// Takes effect from the next recording.
    virtual void choose(const QString &id) = 0;
    /// A sentence about a problem with the current choice; empty if there is none.
    virtual QString choiceProblem() const = 0;

    virtual QList<Model> models() const = 0;
    /// Why no model can be installed, as a sentence; empty if they can.
    virtual QString obstacle() const = 0;
    virtual std::optional<Installation> installation() const = 0;
    /// Why the last installation or removal failed, as a sentence; empty if it succeeded.
    virtual QString problem() const = 0;

    virtual void install(const QString &modelId) = 0;
    virtual void cancelInstallation() = 0;
    virtual void remove(const QString &modelId) = 0;
};

} // namespace talmo
