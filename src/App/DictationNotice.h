#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// A notice that the overlay shows below its title, in addition to the state's own text. Main thread.
class DictationNotice final : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    /// Empty if there is no notice. Not translated yet.
    QString text() const { return m_text; }
    void show(const QString &text);
    void clear();

private:
    QString m_text;
};

} // namespace talmo
