#pragma once

#include <QWidget>

namespace talmo {

/// A hairline between groups.
class Separator final : public QWidget {
public:
    /// `height`: that of the widget, with the line in its middle. `inset`: the gap at both ends of the line.
    explicit Separator(int height, int inset = 0);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_inset;
};

} // namespace talmo
