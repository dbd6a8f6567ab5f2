#pragma once

#include <QTabBar>

namespace talmo {

/// Tabs shown as symbols with their titles below them, centred in the window.
class SettingsTabBar final : public QTabBar {
public:
    SettingsTabBar();

    int addSymbolTab(const QString &symbol, const QString &title);

protected:
    QSize tabSizeHint(int index) const override;
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void paintTab(QPainter &painter, int index) const;
    QString symbol(int index) const { return tabData(index).toString(); }

    int m_hovered = -1;
};

} // namespace talmo
