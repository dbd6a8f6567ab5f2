#pragma once

#include "Settings/PastePermission.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>

class QCheckBox;

namespace talmo {

class WarningRow;

/// The switch that lets Talmo paste where the desktop asks the user. Hidden while Talmo can paste without it.
class PastePermissionSection final : public QWidget {
public:
    explicit PastePermissionSection(std::shared_ptr<PastePermission> permission);

private:
    void refresh();

    std::shared_ptr<PastePermission> m_permission;
    QCheckBox *m_allowed = nullptr;
    WarningRow *m_problem = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
