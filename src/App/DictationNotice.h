#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// A remark that the overlay shows below its title, beside what the state itself has to say. Main thread.
class DictationNotice final : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    /// Empty when there is nothing to remark. One of Talmo's own texts, not worded yet.
    QString text() const { return m_text; }
    void show(const QString &text);
    void clear();

private:
    QString m_text;
};

} // namespace talmo
