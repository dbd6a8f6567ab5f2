#include "UI/Settings/MicrophoneSection.h"

#include "UI/Picker.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/LevelBar.h"
#include "UI/Style/Wording.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

/// Above and below the bar.
constexpr int air = 4;

const char *const whenAskedCaption =
    QT_TRANSLATE_NOOP("Talmo", "Talmo listens only while you dictate or test the microphone.");
const char *const whileShownCaption =
    QT_TRANSLATE_NOOP("Talmo", "Say something: the bar moves. Talmo listens while this page is open, and later only "
                               "while you dictate.");

} // namespace

MicrophoneSection::MicrophoneSection(std::shared_ptr<MicrophoneSettings> settings, Listening listening)
    : m_settings(std::move(settings)),
      m_listening(listening),
      m_watcher(*m_settings, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Microphone")));
    m_choice = Picker::make(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Microphone")));
    section->addRow(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Record from")), m_choice);
    connect(m_choice, &QComboBox::activated, this, [this] { m_settings->choose(m_choice->currentData().toString()); });
    buildLevel(*section);
    m_problem = new WarningRow;
    section->addWidget(m_problem);
    section->addCaption(Wording::text(listening == Listening::WhenAsked ? whenAskedCaption : whileShownCaption));
    layout->addWidget(section);
    connect(m_settings.get(), &MicrophoneSettings::levelChanged, m_level,
            [this] { m_level->setLevel(m_settings->level()); });
    refresh();
}

void MicrophoneSection::buildLevel(SettingsSection &section)
{
    auto *line = new QWidget;
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(0, air, 0, air);
    m_level = new LevelBar;
    row->addWidget(m_level, 1);
    if (m_listening == Listening::WhenAsked) {
        m_test = new QPushButton;
        m_test->setFont(Appearance::font(Appearance::detailSize));
        row->addWidget(m_test);
        connect(m_test, &QPushButton::clicked, this, [this] { m_settings->setListening(!m_settings->isListening()); });
    }
    section.addWidget(line);
}

void MicrophoneSection::showEvent(QShowEvent *event)
{
    m_settings->setFollowing(true);
    if (m_listening == Listening::WhileShown) {
        m_settings->setListening(true);
    }
    QWidget::showEvent(event);
}

void MicrophoneSection::hideEvent(QHideEvent *event)
{
    m_settings->setListening(false);
    m_settings->setFollowing(false);
    QWidget::hideEvent(event);
}

void MicrophoneSection::refresh()
{
    QList<std::pair<QString, QString>> choices;
    for (const auto &choice : m_settings->choices()) {
        choices.append({choice.title, choice.name});
    }
    m_choice->setEntries(choices, m_settings->choice());
    m_problem->setText(m_settings->problem());
    if (m_test != nullptr) {
        m_test->setText(m_settings->isListening() ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Stop"))
                                                  : Wording::text(QT_TRANSLATE_NOOP("Talmo", "Test")));
        m_test->setEnabled(m_settings->isListening() || m_settings->hasMicrophone());
    }
}

} // namespace talmo
