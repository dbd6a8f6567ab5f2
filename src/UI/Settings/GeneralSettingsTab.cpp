#include "UI/Settings/GeneralSettingsTab.h"

#include "Settings/TextTone.h"
#include "UI/Picker.h"
#include "UI/Settings/DictationOptionsSection.h"
#include "UI/Settings/EditingServerRow.h"
#include "UI/Settings/HotkeyRows.h"
#include "UI/Settings/LanguageSection.h"
#include "UI/Settings/MicrophoneSection.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/KeyCap.h"
#include "UI/Style/Symbol.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

constexpr int sectionSpacing = 14;
/// The caption below an example starts where the example's text does.
int bulletIndent()
{
    return Appearance::scaled(Symbol::rowSize) + 6;
}

const char *const shortcutCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to "
             "stop). Works even when Talmo isn't the frontmost app. Requires \"Press 🌐 key to: Do Nothing\" in System "
             "Settings > Keyboard, so macOS's own Globe-key action doesn't also fire. Not yet configurable in this "
             "MVP.");
const char *const aiCleanupCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Uses Apple's on-device Foundation Models to remove filler words and fix punctuation. When off, only "
             "basic local formatting is applied.");
const char *const conciseTextCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Actively trims filler, redundancy, and hedging instead of just lightly cleaning up your wording. Off by "
             "default since it rewrites more than Talmo normally does.");
const char *const toneCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Rewrites dictation to match the selected tone. Combinable with Concise text above. \"Standard\" makes no "
             "tone change.");

const char *const bulletCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Needs AI cleanup with a language model. Without one, these words are left out and no list is made.");

/// In the order of TextTone.
const char *const toneTitles[] = {QT_TRANSLATE_NOOP("Talmo", "Standard"), QT_TRANSLATE_NOOP("Talmo", "Professional"),
                                  QT_TRANSLATE_NOOP("Talmo", "Friendly"), QT_TRANSLATE_NOOP("Talmo", "Polite")};

void setChecked(QCheckBox &toggle, bool isChecked)
{
    const QSignalBlocker blocker(toggle);
    toggle.setChecked(isChecked);
}

} // namespace

GeneralSettingsTab::GeneralSettingsTab(ViewContext context, std::function<void()> showRecogniser)
    : m_context(std::move(context)),
      m_watcher(*m_context.coordinator, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(sectionSpacing);
    buildPushToTalk(*layout);
    if (m_context.microphone) {
        layout->addWidget(new MicrophoneSection(m_context.microphone, MicrophoneSection::Listening::WhenAsked));
    }
    if (m_context.language) {
        layout->addWidget(new LanguageSection(m_context.language, std::move(showRecogniser)));
    }
    buildCleanup(*layout);
    if (m_context.options) {
        layout->addWidget(new DictationOptionsSection(m_context.options));
    }
    buildStartup(*layout);
    layout->addStretch(1);
    refresh();
}

void GeneralSettingsTab::buildPushToTalk(QVBoxLayout &layout)
{
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Push-to-talk")));
    m_shortcut = new KeyCap;
    section->addRow(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Shortcut")), m_shortcut);
    m_shortcutCaption = TintedLabel::caption({});
    section->addWidget(m_shortcutCaption);
    if (m_context.hotkeys) {
        section->addSeparator();
        section->addWidget(new HotkeyRows(m_context.hotkeys));
    }
    layout.addWidget(section);
}

void GeneralSettingsTab::buildCleanup(QVBoxLayout &layout)
{
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Cleanup")));
    m_aiCleanup = section->addToggle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Enable AI cleanup")),
                                     Wording::text(aiCleanupCaption));
    m_warning = new WarningRow;
    section->addWidget(m_warning, SettingsSection::toggleIndent());
    m_server = new EditingServerRow;
    section->addWidget(m_server, SettingsSection::toggleIndent());
    section->addSeparator();
    m_conciseText = section->addToggle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Concise text")),
                                       Wording::text(conciseTextCaption));
    section->addSeparator();
    m_tone = new Picker;
    m_tone->setFont(Appearance::font(Appearance::titleSize));
    m_tone->setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Tone")));
    for (const char *title : toneTitles) {
        m_tone->addItem(Wording::text(title));
    }
    section->addRow(m_tone->accessibleName(), m_tone);
    section->addCaption(Wording::text(toneCaption));
    section->addSeparator();
    section->addCaption(
        Wording::text(QT_TRANSLATE_NOOP("Talmo", "Say it and it happens — like traditional dictation software:")));
    m_bulletExample = section->addExample(
        QStringLiteral("list.bullet"),
        Wording::text(QT_TRANSLATE_NOOP("Talmo", "\"...as bullet points\" → formats as a bullet list")));
    m_bulletCaption = TintedLabel::caption(Wording::text(bulletCaption));
    section->addWidget(m_bulletCaption, bulletIndent());
    section->addExample(QStringLiteral("return"),
                        Wording::text(QT_TRANSLATE_NOOP("Talmo", "\"...new paragraph...\" → starts a new paragraph")));
    section->addExample(QStringLiteral("arrow.turn.down.left"),
                        Wording::text(QT_TRANSLATE_NOOP("Talmo", "\"...new line...\" → starts a new line")));
    layout.addWidget(section);

    const auto settings = m_context.settings;
    connect(m_aiCleanup, &QCheckBox::toggled, this, [settings](bool on) { settings->setAiCleanupEnabled(on); });
    connect(m_conciseText, &QCheckBox::toggled, this, [settings](bool on) { settings->setConciseTextEnabled(on); });
    connect(m_tone, &QComboBox::currentIndexChanged, this,
            [settings](int index) { settings->setTextTone(static_cast<TextTone>(index)); });
}

void GeneralSettingsTab::buildStartup(QVBoxLayout &layout)
{
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Startup")));
    m_launchAtLogin = section->addToggle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Launch at login")), {});
    layout.addWidget(section);
    connect(m_launchAtLogin, &QCheckBox::toggled, this, [settings = m_context.settings](bool on) {
        settings->setLaunchAtLogin(on);
        settings->updateLaunchAtLogin(on);
    });
}

void GeneralSettingsTab::refresh()
{
    const auto &settings = *m_context.settings;
    m_shortcut->setText(Wording::text(settings.hotkeyDisplayName()));
    m_shortcutCaption->setText(Wording::textWithKey(shortcutCaption, settings.hotkeyDisplayName()));
    setChecked(*m_aiCleanup, settings.aiCleanupEnabled());
    setChecked(*m_conciseText, settings.conciseTextEnabled());
    setChecked(*m_launchAtLogin, settings.launchAtLogin());
    {
        const QSignalBlocker blocker(m_tone);
        m_tone->setCurrentIndex(static_cast<int>(settings.textTone()));
    }
    const auto message = m_context.unavailabilityMessage();
    const bool makesLists = !message && settings.aiCleanupEnabled();
    m_bulletExample->setEnabled(makesLists);
    m_bulletCaption->setVisible(!makesLists);
    m_warning->setText(message ? Wording::text(*message) : QString());
    m_server->setServer(m_context.editingServer ? m_context.editingServer() : EditingServer(),
                        settings.aiCleanupEnabled());
}

} // namespace talmo
