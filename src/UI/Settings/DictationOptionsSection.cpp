#include "UI/Settings/DictationOptionsSection.h"

#include "UI/Settings/SettingsSection.h"
#include "UI/Style/Wording.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace talmo {

DictationOptionsSection::DictationOptionsSection(std::shared_ptr<DictationOptions> options)
    : m_options(std::move(options)),
      m_watcher(*m_options, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Dictating")));
    addSwitch(*section, DictationOption::SpaceBetween, QT_TRANSLATE_NOOP("Talmo", "Space between dictations"),
              QT_TRANSLATE_NOOP("Talmo", "Puts a space before a dictation that continues the last one: in the same "
                                         "window, with no key or click in between."));
    addSwitch(*section, DictationOption::Sounds, QT_TRANSLATE_NOOP("Talmo", "Sounds"),
              QT_TRANSLATE_NOOP("Talmo", "Plays a sound of the desktop when a recording starts, when it ends and when "
                                         "something goes wrong."));
    layout->addWidget(section);
    refresh();
}

void DictationOptionsSection::addSwitch(SettingsSection &section, DictationOption option, const char *title,
                                        const char *caption)
{
    if (!m_switches.empty()) {
        section.addSeparator();
    }
    auto *toggle = section.addToggle(Wording::text(title), Wording::text(caption));
    connect(toggle, &QCheckBox::toggled, this,
            [options = m_options, option](bool isOn) { options->setOn(option, isOn); });
    m_switches.emplace_back(option, toggle);
}

void DictationOptionsSection::refresh()
{
    for (const auto &[option, toggle] : m_switches) {
        const QSignalBlocker blocker(toggle);
        toggle->setChecked(m_options->isOn(option));
    }
}

} // namespace talmo
