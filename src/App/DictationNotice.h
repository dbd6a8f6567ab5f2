#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// What the overlay shows in addition to the state's own texts. Nothing here is translated yet. Main thread.
class DictationNotice final : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    /// Below the title while a sentence is processed; empty if there is no notice.
    QString text() const { return m_text; }
    void show(const QString &text);
    void clear();

    /// Beside the title while recording: which keys do what. %1 is replaced by `hintKey`.
    QString hint() const { return m_hint; }
    QString hintKey() const { return m_hintKey; }
    void setHint(const QString &hint, const QString &key);

    /// The title of a card that is about to be hidden.
    QString farewell() const { return m_farewell; }
    void setFarewell(const QString &farewell);

private:
    QString m_text;
    QString m_hint;
    QString m_hintKey;
    QString m_farewell;
};

} // namespace talmo
