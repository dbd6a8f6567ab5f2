#pragma once

#include <QLabel>

namespace talmo {

/// The name of a key, drawn as a key cap.
class KeyCap final : public QLabel {
public:
    KeyCap();

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace talmo
