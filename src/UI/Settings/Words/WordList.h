#pragma once

#include <QListWidget>

namespace talmo {

/// The words of the dictionary, each with its pronunciation, dimmed, at the end of its row.
class WordList final : public QListWidget {
public:
    WordList();

    /// Empty if the word sounds as it is written.
    void setSound(int row, const QString &soundsLike);
    QString sound(int row) const;
};

} // namespace talmo
