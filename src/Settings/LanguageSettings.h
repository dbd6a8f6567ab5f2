#pragma once

#include "Base/Observable.h"

#include <QList>
#include <QString>

namespace talmo {

/// For the settings window: the language to dictate in. Announces every change. Main thread.
class LanguageSettings : public Observable {
    Q_OBJECT

public:
    struct Choice {
        /// Such as "en_GB"; empty for the desktop's language.
        QString id;
        QString title;
    };

    using Observable::Observable;

    /// The desktop's language first.
    virtual QList<Choice> choices() const = 0;
    virtual QString choice() const = 0;
    /// Takes effect with the next recording.
    virtual void choose(const QString &id) = 0;

    /// "Dictating in German needs another recogniser."; empty if there is one.
    virtual QString problem() const = 0;
    /// Whether setUp() can provide that recogniser.
    virtual bool canSetUp() const = 0;
    virtual void setUp() = 0;
    /// Dictates in the language that the built-in recogniser speaks.
    virtual void useEnglish() = 0;
};

} // namespace talmo
