#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QCheckBox;

namespace talmo {

class SettingsSection;
class SymbolLabel;

/// What Talmo does with recorded speech, and the permissions it has.
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
    QWidget *makePasswordFields();
    void addPermission(SettingsSection &section, const QString &name, std::function<bool()> isGranted,
                       std::function<void()> openSettings);

    ViewContext m_context;
    std::vector<PermissionRow> m_permissions;
    QCheckBox *m_guardPasswordFields = nullptr; ///< Null if the platform cannot detect password fields.
    ChangeWatcher m_watcher;
    std::unique_ptr<ChangeWatcher> m_passwordFieldsWatcher;
};

} // namespace talmo
