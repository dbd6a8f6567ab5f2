#include "UI/Settings/DesktopExtensionSection.h"

#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

DesktopExtensionSection::DesktopExtensionSection(std::shared_ptr<DesktopExtension> extension, Shown shown)
    : m_extension(std::move(extension)),
      m_shown(shown),
      m_watcher(*m_extension, [this] { refresh(); })
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "This desktop")));
    m_warning = new WarningRow;
    section->addWidget(m_warning);
    m_sentence = TintedLabel::caption({});
    section->addWidget(m_sentence);
    m_enable = new QPushButton;
    m_enable->setFont(Appearance::font(Appearance::titleSize));
    section->addWidget(m_enable);
    layout->addWidget(section);
    connect(m_enable, &QPushButton::clicked, this, [this] { m_extension->enable(); });
    refresh();
    m_extension->refresh();
}

void DesktopExtensionSection::refresh()
{
    const auto status = m_extension->status();
    m_warning->setText(status.isMissing ? status.sentence : QString());
    m_sentence->setText(status.isMissing ? QString() : status.sentence);
    m_sentence->setVisible(!m_sentence->text().isEmpty());
    m_enable->setText(status.offer.isEmpty() ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Enable the extension"))
                                             : status.offer);
    m_enable->setVisible(status.canBeEnabled);
    setVisible(!status.sentence.isEmpty() && (status.isMissing || m_shown == Shown::Always));
}

} // namespace talmo
