#include "UI/Menu/StatusItemController.h"

#include <utility>

namespace talmo {

StatusItemController::StatusItemController(ViewContext context, std::shared_ptr<StatusItem> item)
    : m_context(std::move(context)),
      m_item(std::move(item)),
      m_watcher({m_context.coordinator, m_context.pause.get(), m_context.recogniser.get()}, [this] { refresh(); })
{
    refresh();
}

/// Passes on only what has changed: words arrive many times a second and must not cause the icon to be redrawn.
void StatusItemController::refresh()
{
    const QString symbol =
        menuBarSymbol(m_context.coordinator->state(), m_context.pause && m_context.pause->isPaused());
    if (std::exchange(m_symbol, symbol) != symbol) {
        m_item->setSymbol(symbol);
    }
    const auto menu = MenuContents::make(m_context);
    if (std::exchange(m_menu, menu) != menu) {
        m_item->setMenu(menu);
    }
}

} // namespace talmo
