#include "UI/Settings/PrivacySettingsTab.h"

#include "UI/Accessibility/AccessibleName.h"
#include "UI/Settings/DesktopExtensionSection.h"
#include "UI/Settings/HistorySection.h"
#include "UI/Settings/PastePermissionSection.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

constexpr int sectionSpacing = 14;

const char *const privacyCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Talmo has no backend, no account, and no network functionality. Recording, transcription, and text "
             "cleanup all run using Apple's on-device Speech and Foundation Models frameworks. Nothing you say or type "
             "is sent anywhere.");
const char *const passwordFieldsCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Talmo does not paste if the application in front reports that the cursor is in a password field. "
             "Requires the desktop's accessibility service.");

} // namespace

PrivacySettingsTab::PrivacySettingsTab(ViewContext context)
    : m_context(std::move(context)),
      m_watcher(*m_context.coordinator, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(sectionSpacing);
    layout->addWidget(makeStatement());

    layout->addWidget(makePermissions());
    for (const auto &extension : {m_context.desktopExtension, m_context.desktopKey}) {
        if (extension) {
            layout->addWidget(new DesktopExtensionSection(extension, DesktopExtensionSection::Shown::Always));
        }
    }
    if (m_context.pastePermission) {
        layout->addWidget(new PastePermissionSection(m_context.pastePermission));
    }
    if (m_context.passwordFields) {
        layout->addWidget(makePasswordFields());
    }
    if (m_context.history && m_context.options && m_context.recovery) {
        layout->addWidget(new HistorySection(m_context.options, m_context.history, m_context.recovery));
    }
    layout->addStretch(1);
    refresh();
}

QWidget *PrivacySettingsTab::makePermissions()
{
    const auto permissions = m_context.permissions;
    auto *section = new SettingsSection;
    addPermission(*section, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Microphone")), SettingsPane::Microphone,
                  [permissions] { return permissions->microphoneStatus() == SimpleStatus::Granted; });
    if (m_context.microphone) {
        m_permissions.back().isPresent = [microphone = m_context.microphone] { return microphone->hasMicrophone(); };
        m_microphoneWatcher = std::make_unique<ChangeWatcher>(*m_context.microphone, [this] { refresh(); });
        m_microphoneProblem = new WarningRow;
        section->addWidget(m_microphoneProblem);
    }
    // Speech recognition has no pane of its own; it depends on the microphone.
    addPermission(*section, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Speech Recognition")), SettingsPane::Microphone,
                  [permissions] { return permissions->speechRecognitionStatus() == SimpleStatus::Granted; });
    addPermission(*section, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Accessibility")), SettingsPane::Accessibility,
                  [permissions] { return permissions->accessibilityGranted(); });
    for (const auto &limit : m_context.limits) {
        auto *row = new WarningRow;
        section->addWidget(row); // Before it is shown, or it would be a window.
        row->setText(limit);
    }
    return section;
}

void PrivacySettingsTab::showEvent(QShowEvent *event)
{
    if (m_context.microphone) {
        m_context.microphone->setFollowing(true);
    }
    if (m_context.desktopExtension) {
        m_context.desktopExtension->refresh();
    }
    QWidget::showEvent(event);
}

void PrivacySettingsTab::hideEvent(QHideEvent *event)
{
    if (m_context.microphone) {
        m_context.microphone->setFollowing(false);
    }
    QWidget::hideEvent(event);
}

QWidget *PrivacySettingsTab::makePasswordFields()
{
    auto *section = new SettingsSection;
    m_guardPasswordFields = section->addToggle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Protect password fields")),
                                               Wording::text(passwordFieldsCaption));
    connect(m_guardPasswordFields, &QCheckBox::toggled, this,
            [settings = m_context.passwordFields](bool on) { settings->setGuarded(on); });
    m_passwordFieldsWatcher = std::make_unique<ChangeWatcher>(*m_context.passwordFields, [this] { refresh(); });
    return section;
}

QWidget *PrivacySettingsTab::makeStatement()
{
    auto *section = new SettingsSection;
    auto *line = new QWidget;
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new SymbolLabel(QStringLiteral("checkmark.shield.fill"), &Appearance::green, Symbol::rowSize + 4));
    auto *statement =
        new QLabel(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Audio and transcripts are processed locally on this "
                                                            "Mac.")));
    statement->setTextFormat(Qt::PlainText);
    statement->setFont(Appearance::font(Appearance::titleSize, QFont::Medium));
    row->addWidget(statement, 1);
    section->addWidget(line);
    section->addCaption(Wording::text(privacyCaption));
    return section;
}

void PrivacySettingsTab::openSettings(SettingsPane pane)
{
    if (pane == SettingsPane::Microphone) {
        m_context.permissions->openMicrophoneSettings();
    } else {
        m_context.permissions->openAccessibilitySettings();
    }
}

void PrivacySettingsTab::addPermission(SettingsSection &section, const QString &name, SettingsPane pane,
                                       std::function<bool()> isGranted)
{
    if (!m_permissions.empty()) {
        section.addSeparator();
    }
    auto *button = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Open Settings…")));
    button->setFont(Appearance::font(Appearance::detailSize));
    button->setAccessibleDescription(name);
    connect(button, &QPushButton::clicked, this, [this, pane] { openSettings(pane); });
    auto *status = new SymbolLabel({}, &Appearance::green);
    auto *row = section.addRow(name, button);
    button->setVisible(!m_context.canOpenSettings || m_context.canOpenSettings(pane));
    row->insertWidget(0, status);
    row->setSpacing(8);
    m_permissions.push_back({status, std::move(isGranted), {}});
}

void PrivacySettingsTab::refresh()
{
    for (const auto &[status, isGranted, isPresent] : m_permissions) {
        const bool isMissing = isPresent && !isPresent();
        const bool granted = isGranted() && !isMissing;
        status->setSymbol(granted ? QStringLiteral("checkmark.circle.fill")
                                  : QStringLiteral("exclamationmark.triangle.fill"),
                          granted ? &Appearance::green : &Appearance::orange);
        nameAccessibly(*status, isMissing ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Not found"))
                                : granted ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Granted"))
                                          : Wording::text(QT_TRANSLATE_NOOP("Talmo", "Not granted")));
    }
    if (m_microphoneProblem != nullptr) {
        const auto &microphone = *m_context.microphone;
        m_microphoneProblem->setText(microphone.hasMicrophone() ? QString() : microphone.problem());
    }
    if (m_guardPasswordFields != nullptr) {
        const QSignalBlocker blocker(m_guardPasswordFields);
        m_guardPasswordFields->setChecked(m_context.passwordFields->isGuarded());
    }
}

} // namespace talmo
