#pragma once

#include "Base/Observable.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace talmo {

/// The recognisers of a system that has several, for the settings window: which one is used, and the models that can
/// be had for them. Announces every change. Main thread.
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
        /// What it gives, how large it is.
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
        /// From 0 to 1; none while it cannot be told.
        std::optional<double> share;
    };

    using Observable::Observable;

    /// What can be chosen; the first is to choose nothing in particular.
    virtual QList<Choice> choices() const = 0;
    virtual QString choice() const = 0;
    /// From the next recording on.
    virtual void choose(const QString &id) = 0;
    /// A sentence on what is wrong with the choice or what there is; empty for nothing.
    virtual QString choiceProblem() const = 0;

    virtual QList<Model> models() const = 0;
    /// Why none can be installed at all, as a sentence; empty when they can.
    virtual QString obstacle() const = 0;
    virtual std::optional<Installation> installation() const = 0;
    /// What went wrong with the installation or removal before, as a sentence; empty for nothing.
    virtual QString problem() const = 0;

    virtual void install(const QString &modelId) = 0;
    virtual void cancelInstallation() = 0;
    virtual void remove(const QString &modelId) = 0;
};

} // namespace talmo
