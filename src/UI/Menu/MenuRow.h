#pragma once

#include <QPushButton>
#include <QString>

namespace talmo {

/// A menu row: an icon, a title and an optional hint at the end. Hovering moves the focus, so that only one row is ever
/// highlighted.
class MenuRow final : public QPushButton {
public:
    MenuRow();

    void setContents(const QString &symbol, const QString &title, const QString &hint);
    const QString &symbol() const { return m_symbol; }
    const QString &hint() const { return m_hint; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_symbol;
    QString m_hint;
};

} // namespace talmo
