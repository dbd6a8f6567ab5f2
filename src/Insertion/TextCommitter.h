#pragma once

#include <QFuture>
#include <QString>

namespace talmo {

/// Gives text to the focused field without the clipboard and without a key. Main thread.
class TextCommitter {
public:
    virtual ~TextCommitter() = default;

    /// False if the field cannot take the text this way; it then has none of it. Never fails.
    virtual QFuture<bool> commit(const QString &text) = 0;
};

} // namespace talmo
