#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// For the settings window: the pronunciations of the dictionary's words. Announces every change. Main thread.
class WordPronunciations : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    /// Reads again what the user may have changed elsewhere.
    virtual void refresh() = 0;
    /// Empty if the word sounds as it is written. Upper and lower case are the same.
    virtual QString of(const QString &word) const = 0;
    /// Takes effect from the next recording; an empty sound removes it.
    virtual void set(const QString &word, const QString &soundsLike) = 0;
};

} // namespace talmo
