#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/Menu/MenuContents.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <functional>
#include <vector>

class QPushButton;
class QVBoxLayout;

namespace talmo {

class BriefText;
class MenuRow;
class TintedLabel;

/// The content of the panel that drops from the menu bar: the state, the missing permissions and the commands. Holds no
/// state of its own.
class MenuBarView final : public QWidget {
public:
    /// `perform` is called with the chosen action, never with MenuAction::None.
    MenuBarView(ViewContext context, std::function<void(MenuAction)> perform);

    /// Refreshes everything at once; otherwise that happens after every change.
    void refresh();
    /// Gives the keyboard focus to the row that is most likely wanted.
    void focusFirstRow();
    /// The width is fixed; the height follows the content.
    QSize sizeHint() const override;
    /// Whether an error that is longer than two lines is shown with all of its text.
    void setDetailed(bool isDetailed);
    void setOnSizeChanged(std::function<void()> callback) { m_onSizeChanged = std::move(callback); }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildHeader(QVBoxLayout &layout);
    void buildWarnings(QVBoxLayout &layout);
    void buildOffer(QVBoxLayout &layout);
    void buildRows(QVBoxLayout &layout);
    MenuRow *addRow(QVBoxLayout &layout);
    void showContents();
    void showWarnings();
    void showOffer();
    void announceSize();
    void moveFocus(int step);
    void choose(MenuAction action);

    ViewContext m_context;
    std::function<void(MenuAction)> m_perform;
    std::function<void()> m_onSizeChanged;
    MenuContents m_contents;
    BriefText *m_title = nullptr;
    TintedLabel *m_subtitle = nullptr;
    QWidget *m_warnings = nullptr;
    std::vector<QWidget *> m_warningRows;
    QPushButton *m_grant = nullptr;
    QWidget *m_offer = nullptr;
    MenuRow *m_offerRow = nullptr;
    TintedLabel *m_offerDetail = nullptr;
    MenuRow *m_mainRow = nullptr;
    MenuRow *m_resume = nullptr;
    MenuRow *m_settings = nullptr;
    MenuRow *m_quit = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
