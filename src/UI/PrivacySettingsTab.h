#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <functional>
#include <vector>

namespace talmo {

class SettingsSection;
class SymbolLabel;

/// What Talmo does with what it hears, and the permissions it has.
class PrivacySettingsTab final : public QWidget {
public:
    explicit PrivacySettingsTab(ViewContext context);

    void reread();

private:
    struct PermissionRow {
        SymbolLabel *status;
        std::function<bool()> isGranted;
    };
    QWidget *makeStatement();
    void addPermission(SettingsSection &section, const QString &name, std::function<bool()> isGranted,
                       std::function<void()> openSettings);

    ViewContext m_context;
    std::vector<PermissionRow> m_permissions;
    ChangeWatcher m_watcher;
};

} // namespace talmo
