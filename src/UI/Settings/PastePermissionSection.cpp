#include "UI/Settings/PastePermissionSection.h"

#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Wording.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

PastePermissionSection::PastePermissionSection(std::shared_ptr<PastePermission> permission)
    : m_permission(std::move(permission)),
      m_watcher(*m_permission, [this] { refresh(); })
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection;
    m_allowed = section->addToggle(
        Wording::text(QT_TRANSLATE_NOOP("Talmo", "Paste with the desktop's remote control")),
        Wording::text(QT_TRANSLATE_NOOP("Talmo", "Lets Talmo press the paste shortcut in Wayland windows. The desktop "
                                                 "may ask once, and may show that it is controlled while Talmo "
                                                 "pastes.")));
    m_problem = new WarningRow;
    section->addWidget(m_problem);
    layout->addWidget(section);
    connect(m_allowed, &QCheckBox::toggled, this, [this](bool on) { m_permission->setAllowed(on); });
    refresh();
}

void PastePermissionSection::refresh()
{
    const QSignalBlocker blocker(m_allowed);
    m_allowed->setChecked(m_permission->isAllowed());
    m_problem->setText(m_permission->problem());
    setVisible(m_permission->isNeeded());
}

} // namespace talmo
