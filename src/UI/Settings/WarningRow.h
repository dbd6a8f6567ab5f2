#pragma once

#include <QWidget>

namespace talmo {

class TintedLabel;

/// A warning sign and a sentence; hidden while the text is empty.
class WarningRow final : public QWidget {
public:
    WarningRow();
    void setText(const QString &text);

private:
    TintedLabel *m_text;
};

} // namespace talmo
