#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// For the settings window: what the words of the dictionary sound like. Announces every change. Main thread.
class WordPronunciations : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    /// Reads anew what the user may have changed elsewhere.
    virtual void refresh() = 0;
    /// Empty if the word sounds as it is written. Upper and lower case are the same.
    virtual QString of(const QString &word) const = 0;
    /// Takes effect from the next recording; an empty sound removes it.
    virtual void set(const QString &word, const QString &soundsLike) = 0;
};

} // namespace talmo
