#pragma once

#include "UI/ViewContext.h"

#include <QStackedWidget>
#include <QWidget>

#include <functional>

namespace talmo {

class SettingsTabBar;

/// The settings, in three tabs. There is no Apply or Cancel, since every control saves at once.
class SettingsView final : public QWidget {
public:
    explicit SettingsView(const ViewContext &context);

    /// Refreshes everything at once; otherwise that happens after every change.
    void reread();
    /// The height at which the first tab fits without scrolling.
    int idealHeight(int width) const;

private:
    void addPage(QWidget *page, const QString &title, const QString &symbol);
    void addShortcuts();
    void turnPages(int step);

    SettingsTabBar *m_tabs;
    QStackedWidget *m_pages;
    QWidget *m_firstPage = nullptr;
    std::function<void()> m_rereadTabs;
};

} // namespace talmo
