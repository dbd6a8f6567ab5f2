#pragma once

#include <QWidget>

namespace talmo {

/// How loud a microphone is. Not a progress bar, whose every change a screen reader would announce.
class LevelBar final : public QWidget {
public:
    LevelBar();

    /// From 0 to 1.
    void setLevel(double level);
    double level() const { return m_level; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_level = 0;
};

} // namespace talmo
