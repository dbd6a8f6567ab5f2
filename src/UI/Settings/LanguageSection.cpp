#include "UI/Settings/LanguageSection.h"

#include "UI/Picker.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Wording.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

LanguageSection::LanguageSection(std::shared_ptr<LanguageSettings> settings, std::function<void()> onSetUp)
    : m_settings(std::move(settings)),
      m_watcher(*m_settings, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Language")));
    m_choice = Picker::make(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Language")));
    section->addRow(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Dictate in")), m_choice);
    m_problem = new WarningRow;
    section->addWidget(m_problem);
    m_ways = new QWidget;
    auto *row = new QHBoxLayout(m_ways);
    row->setContentsMargins(0, 0, 0, 0);
    m_setUp = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Set it up")));
    auto *useEnglish = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Use English for now")));
    for (auto *button : {m_setUp, useEnglish}) {
        button->setFont(Appearance::font(Appearance::detailSize));
        row->addWidget(button);
    }
    row->addStretch(1);
    section->addWidget(m_ways);
    layout->addWidget(section);
    connect(m_choice, &QComboBox::activated, this, [this] { m_settings->choose(m_choice->currentData().toString()); });
    connect(m_setUp, &QPushButton::clicked, this, [this, onSetUp = std::move(onSetUp)] {
        m_settings->setUp();
        if (onSetUp) {
            onSetUp();
        }
    });
    connect(useEnglish, &QPushButton::clicked, this, [this] { m_settings->useEnglish(); });
    refresh();
}

void LanguageSection::refresh()
{
    QList<std::pair<QString, QString>> choices;
    for (const auto &choice : m_settings->choices()) {
        choices.append({choice.title, choice.id});
    }
    m_choice->setEntries(choices, m_settings->choice());
    const QString problem = m_settings->problem();
    m_problem->setText(problem);
    m_ways->setVisible(!problem.isEmpty());
    m_setUp->setEnabled(m_settings->canSetUp());
}

} // namespace talmo
