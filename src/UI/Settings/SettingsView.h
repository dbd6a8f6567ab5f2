#pragma once

#include "UI/ViewContext.h"

#include <QStackedWidget>
#include <QWidget>

#include <functional>

namespace talmo {

class SettingsTabBar;

/// The settings, in tabs: three, and one for the recogniser where there is a choice. There is no Apply or Cancel, since
/// every control saves at once.
class SettingsView final : public QWidget {
public:
    explicit SettingsView(const ViewContext &context);

    /// Refreshes everything at once; otherwise that happens after every change.
    void refresh();
    /// Turns to the recogniser's page, if there is one.
    void showRecogniser();
    /// The page that is shown.
    int page() const { return m_pages->currentIndex(); }
    void showPage(int index);
    /// The height at which the first tab fits without scrolling.
    int idealHeight(int width) const;

private:
    void addPage(QWidget *page, const QString &title, const QString &symbol);
    void addRecogniser(const std::shared_ptr<RecogniserSettings> &recogniser);
    void addShortcuts();
    void turnPages(int step);

    SettingsTabBar *m_tabs;
    QStackedWidget *m_pages;
    QWidget *m_firstPage = nullptr;
    int m_recogniserPage = -1;
    std::function<void()> m_refreshTabs;
};

} // namespace talmo
