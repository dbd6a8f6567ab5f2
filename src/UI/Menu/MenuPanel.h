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
    /// `perform` is called once the panel has closed and the keyboard is back where it was.
    MenuPanel(const ViewContext &context, PanelWindowFactory makeWindow, std::shared_ptr<ScreenSource> screens,
              std::shared_ptr<FrontmostFocus> focus, std::function<void(MenuAction)> perform);
    ~MenuPanel();

    /// Opens it below or above the icon, or in the corner next to the pointer where the icon's place is not known.
    void open(std::optional<QRect> icon);
    void toggle(std::optional<QRect> icon);
    bool isOpen() const;
    /// Finishes, without failing, when the panel has gone and the keyboard is back; at once when it was not open.
    QFuture<void> close();

private:
    void choose(MenuAction action);
    void place();

    ViewContext m_context;
    PanelWindowFactory m_makeWindow;
    std::shared_ptr<ScreenSource> m_screens;
    std::shared_ptr<FrontmostFocus> m_focus;
    std::shared_ptr<std::function<void(MenuAction)>> m_perform;
    std::unique_ptr<PanelWindow> m_panel;
    MenuBarView *m_view = nullptr; ///< Belongs to the panel.
    std::optional<QRect> m_icon;
    std::optional<Screen> m_screen;
    QPoint m_pointer;
};

/// Where a panel of that size belongs on the screen: at the icon if there is one, else in the corner that is nearest to
/// the pointer; always within the visible part.
QRect menuPanelFrame(const Screen &screen, std::optional<QRect> icon, QPoint pointer, QSize size);

} // namespace talmo
