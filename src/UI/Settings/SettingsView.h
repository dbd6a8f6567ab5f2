#pragma once

#include "UI/ViewContext.h"

#include <QStackedWidget>
#include <QWidget>

#include <functional>

namespace talmo {

class SettingsTabBar;

/// The settings: three tabs, without an Apply or a Cancel, since every control writes at once.
class SettingsView final : public QWidget {
public:
    explicit SettingsView(const ViewContext &context);

    /// Shows everything as it is now; otherwise that happens after every change.
    void reread();
    /// What it takes for the first tab to show without scrolling.
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
