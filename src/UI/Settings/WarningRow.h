#pragma once

#include <QWidget>

namespace talmo {

class TintedLabel;

/// A sentence about something that is not as it should be, behind a warning sign; not there while there is none.
class WarningRow final : public QWidget {
public:
    WarningRow();
    void setText(const QString &text);

private:
    TintedLabel *m_text;
};

} // namespace talmo
