#pragma once

#include <QPushButton>
#include <QString>

namespace talmo {

/// A row that can be chosen: an icon, a title, and a hint at the other end where there is one. The row under the
/// pointer has the focus, so that there is one highlight, whichever way it was moved there.
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
