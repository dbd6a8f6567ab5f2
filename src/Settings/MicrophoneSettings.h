#pragma once

#include "Base/Observable.h"

#include <QList>
#include <QString>

namespace talmo {

/// For the settings window: the microphones of this computer, and how loud the chosen one is. Announces every change
/// except that of the level, which has a signal of its own. Main thread.
class MicrophoneSettings : public Observable {
    Q_OBJECT

public:
    struct Choice {
        /// Empty for the system's default.
        QString name;
        QString title;
    };

    using Observable::Observable;

    /// The default first. A chosen microphone that is not connected is among them.
    virtual QList<Choice> choices() const = 0;
    virtual QString choice() const = 0;
    /// Takes effect with the next recording.
    virtual void choose(const QString &name) = 0;

    /// What is wrong and what to do, as a sentence; empty if nothing is known to be wrong.
    virtual QString problem() const = 0;
    /// False if it is known that there is no microphone.
    virtual bool hasMicrophone() const = 0;

    /// Follows microphones being plugged and unplugged, until each call with true is matched by one with
    /// false. Records nothing.
    virtual void setFollowing(bool isFollowing) = 0;
    /// Measures the level of the chosen microphone, which the desktop may show as a recording.
    virtual void setListening(bool isListening) = 0;
    virtual bool isListening() const = 0;
    /// From 0 to 1, for a level bar.
    virtual double level() const = 0;

Q_SIGNALS:
    void levelChanged();
};

} // namespace talmo
