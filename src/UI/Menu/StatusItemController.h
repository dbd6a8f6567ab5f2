#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/Menu/StatusItem.h"
#include "UI/ViewContext.h"

#include <memory>

namespace talmo {

/// Keeps the menu bar icon and its plain menu in step with the coordinator. Main thread.
class StatusItemController {
public:
    StatusItemController(ViewContext context, std::shared_ptr<StatusItem> item);

private:
    void refresh();

    ViewContext m_context;
    std::shared_ptr<StatusItem> m_item;
    QString m_symbol;
    MenuContents m_menu;
    ChangeWatcher m_watcher;
};

} // namespace talmo
