#pragma once

#include "UI/Style/TintedLabel.h"

#include <QWidget>

#include <functional>

class QPushButton;

namespace talmo {

/// A text of two lines at most; the button “Details” below a longer one shows all of it.
class BriefText final : public QWidget {
public:
    static constexpr int mostLines = 2;

    /// `width`: of the lines, in logical pixels.
    BriefText(const QFont &font, TintedLabel::Colour colour, int width);

    /// A changed text is shortened again.
    void setText(const QString &text);
    /// As long as it is, or brief again.
    void setWhole(bool isWhole);
    const TintedLabel &label() const { return *m_label; }
    /// Called when the user asks for the whole text.
    void setOnSizeChanged(std::function<void()> callback) { m_onSizeChanged = std::move(callback); }

private:
    void showText();

    TintedLabel *m_label;
    QPushButton *m_details;
    int m_width;
    QString m_text;
    bool m_isWhole = false;
    std::function<void()> m_onSizeChanged;
};

/// The text in this many lines, with an ellipsis if it is cut.
QString firstLines(const QString &text, const QFont &font, int width, int mostLines);

} // namespace talmo
