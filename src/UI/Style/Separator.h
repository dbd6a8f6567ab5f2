#pragma once

#include <QWidget>

namespace talmo {

/// A hairline between groups.
class Separator final : public QWidget {
public:
    /// `height`: of the room that it stands in the middle of. `inset`: how far it stays from both ends.
    explicit Separator(int height, int inset = 0);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_inset;
};

} // namespace talmo
