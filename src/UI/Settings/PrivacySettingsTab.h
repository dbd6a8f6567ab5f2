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
class WarningRow;

/// What Talmo does with recorded speech, and the permissions it has.
class PrivacySettingsTab final : public QWidget {
public:
    explicit PrivacySettingsTab(ViewContext context);

    void refresh();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    struct PermissionRow {
        SymbolLabel *status;
        std::function<bool()> isGranted;
        /// False if there is nothing that could be granted; null if there always is.
        std::function<bool()> isPresent;
    };
    QWidget *makeStatement();
    QWidget *makePasswordFields();
    QWidget *makePermissions();
    void addPermission(SettingsSection &section, const QString &name, SettingsPane pane,
                       std::function<bool()> isGranted);
    void openSettings(SettingsPane pane);

    ViewContext m_context;
    std::vector<PermissionRow> m_permissions;
    QCheckBox *m_guardPasswordFields = nullptr; ///< Null if the platform cannot detect password fields.
    WarningRow *m_microphoneProblem = nullptr;
    ChangeWatcher m_watcher;
    std::unique_ptr<ChangeWatcher> m_microphoneWatcher;
    std::unique_ptr<ChangeWatcher> m_passwordFieldsWatcher;
};

} // namespace talmo
