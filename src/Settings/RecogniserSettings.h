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

    /// Better recognition that one press installs.
    struct Offer {
        /// "Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."
        QString detail;
        /// "67 MB"; empty if unknown.
        QString size;
    };

    using Observable::Observable;

    /// The available choices; the first one is automatic.
    virtual QList<Choice> choices() const = 0;
    virtual QString choice() const = 0;
    /// Takes effect from the next recording.
    virtual void choose(const QString &id) = 0;
    /// For the text that is shown while the user speaks; the first one is automatic. Empty unless a model is installed
    /// whose own text comes only in pauses.
    virtual QList<Choice> liveChoices() const = 0;
    virtual QString liveChoice() const = 0;
    /// Takes effect from the next recording.
    virtual void chooseLive(const QString &id) = 0;
    /// A sentence about a problem with a current choice; empty if there is none.
    virtual QString choiceProblem() const = 0;

    virtual QList<Model> models() const = 0;
    /// Why no model can be installed, as a sentence; empty if they can.
    virtual QString obstacle() const = 0;
    virtual std::optional<Installation> installation() const = 0;
    /// Why the last installation or removal failed, as a sentence; empty if it succeeded.
    virtual QString problem() const = 0;

    /// Nullopt unless the built-in recogniser is the only one for the user's language, and while something is being
    /// installed.
    virtual std::optional<Offer> offer() const = 0;
    /// Installs what is offered, and uses it from the next recording on.
    virtual void acceptOffer() = 0;

    /// The user's language has changed.
    virtual void languageChanged() = 0;

    virtual void install(const QString &modelId) = 0;
    virtual void cancelInstallation() = 0;
    virtual void remove(const QString &modelId) = 0;
};

} // namespace talmo
