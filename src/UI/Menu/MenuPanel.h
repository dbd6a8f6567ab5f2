#pragma once

#include "UI/Menu/FrontmostFocus.h"
#include "UI/Menu/MenuContents.h"
#include "UI/Overlay/PanelWindow.h"
#include "UI/Overlay/ScreenSource.h"
#include "UI/ViewContext.h"

#include <QFuture>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

class MenuBarView;

/// The panel that drops from the icon in the menu bar. Main thread.
class MenuPanel {
public:
    /// `perform` is called once the panel has closed and the keyboard focus is back in its window.
    MenuPanel(const ViewContext &context, PanelWindowFactory makeWindow, std::shared_ptr<ScreenSource> screens,
              std::shared_ptr<FrontmostFocus> focus, std::function<void(MenuAction)> perform);
    ~MenuPanel();

    /// Opens the panel below or above the icon, or in the corner nearest to the pointer if the icon's position is
    /// unknown.
    void open(std::optional<QRect> icon);
    /// The same, in the corner, with the whole text of an error.
    void openWithDetails();
    void toggle(std::optional<QRect> icon);
    bool isOpen() const;
    /// Finishes, without failing, when the panel is gone and the keyboard focus is back; at once if it was not open.
    QFuture<void> close();

private:
    void choose(MenuAction action);
    void make();
    void place();

    ViewContext m_context;
    PanelWindowFactory m_makeWindow;
    std::shared_ptr<ScreenSource> m_screens;
    std::shared_ptr<FrontmostFocus> m_focus;
    std::shared_ptr<std::function<void(MenuAction)>> m_perform;
    std::unique_ptr<PanelWindow> m_panel;
    MenuBarView *m_view = nullptr; ///< Owned by the panel.
    std::optional<QRect> m_icon;
    std::optional<Screen> m_screen;
    QPoint m_pointer;
    qreal m_textScale = 0;
};

/// The frame of a panel of that size: at the icon if there is one, else in the corner nearest to the pointer; always
/// within the visible frame.
QRect menuPanelFrame(const Screen &screen, std::optional<QRect> icon, QPoint pointer, QSize size);

} // namespace talmo
