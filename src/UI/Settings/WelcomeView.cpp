#include "UI/Settings/WelcomeView.h"

#include "UI/Settings/SettingsScrollArea.h"

#include "UI/Settings/DesktopExtensionSection.h"
#include "UI/Settings/HotkeyRows.h"
#include "UI/Settings/LanguageSection.h"
#include "UI/Settings/MicrophoneSection.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/KeyCap.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

constexpr int margin = 16;
/// So that the field to try it in is seen on a screen of 768 pixels without scrolling.
constexpr int sectionSpacing = 9;
constexpr int headingSize = 20;
constexpr int fieldHeight = 48;
constexpr int progressHeight = 9;
constexpr int progressSteps = 1000;

const char *const greeting = QT_TRANSLATE_NOOP(
    "Talmo", "Hold %1, speak, and let go: your words are typed where the cursor is, in any program. Tap the key twice "
             "to dictate hands-free. Nothing that you say leaves this computer.");
const char *const whereItIs = QT_TRANSLATE_NOOP(
    "Talmo", "Starting Talmo again opens its settings. So does its microphone icon, if your panel has a place for it.");

} // namespace

WelcomeView::WelcomeView(const ViewContext &context, std::function<void()> done)
    : m_context(context),
      m_done(std::move(done)),
      m_watcher({m_context.coordinator, m_context.recogniser.get()}, [this] { refresh(); }, this)
{
    auto *inner = m_page = new QWidget;
    auto *page = new QVBoxLayout(inner);
    page->setContentsMargins(margin, margin, margin, margin);
    page->setSpacing(sectionSpacing);
    buildGreeting(*page);
    if (m_context.desktopExtension) {
        page->addWidget(
            new DesktopExtensionSection(m_context.desktopExtension, DesktopExtensionSection::Shown::WhileMissing));
    }
    buildKey(*page);
    if (m_context.microphone) {
        page->addWidget(new MicrophoneSection(m_context.microphone, MicrophoneSection::Listening::WhileShown));
    }
    if (m_context.language) {
        page->addWidget(new LanguageSection(m_context.language));
    }
    buildTrial(*page);
    buildOffer(*page);
    page->addStretch(1);
    auto *area = scrollAreaOf(inner, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Welcome to Talmo")));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(area, 1);
    buildEnd(*layout);
    refresh();
    setFocusProxy(m_field); // To try it is what a new user wants first.
}

int WelcomeView::idealHeight(int width) const
{
    return m_page->layout()->totalHeightForWidth(width) + m_end->sizeHint().height();
}

void WelcomeView::buildGreeting(QVBoxLayout &page)
{
    auto *heading = new QLabel(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Welcome to Talmo")));
    heading->setTextFormat(Qt::PlainText);
    heading->setFont(Appearance::font(headingSize, QFont::DemiBold));
    page.addWidget(heading);
    m_greeting = TintedLabel::caption({});
    m_greeting->setFont(Appearance::font(Appearance::titleSize));
    page.addWidget(m_greeting);
    m_missing = new WarningRow;
    page.addWidget(m_missing);
    for (const auto &limit : m_context.limits) {
        auto *row = new WarningRow;
        page.addWidget(row); // Before it is shown, or it would be a window.
        row->setText(limit);
    }
}

void WelcomeView::buildKey(QVBoxLayout &page)
{
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "The key to hold")));
    m_key = new KeyCap;
    section->addRow(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Hold this key to speak")), m_key);
    if (m_context.hotkeys) {
        section->addWidget(new HotkeyRows(m_context.hotkeys));
    }
    page.addWidget(section);
}

void WelcomeView::buildTrial(QVBoxLayout &page)
{
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Try it")));
    m_field = new QPlainTextEdit;
    m_field->setFont(Appearance::font(Appearance::titleSize));
    m_field->setFixedHeight(Appearance::scaled(fieldHeight));
    m_field->setTabChangesFocus(true);
    m_field->setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "A field to try it in")));
    section->addWidget(m_field);
    page.addWidget(section);
}

void WelcomeView::buildOffer(QVBoxLayout &page)
{
    if (!m_context.recogniser) {
        return;
    }
    auto *section = new SettingsSection(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Recognition")));
    m_offer = TintedLabel::caption({});
    m_accept = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Get better recognition")));
    m_accept->setFont(Appearance::font(Appearance::titleSize));
    m_progress = new QProgressBar;
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(progressHeight);
    m_progress->setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Installation")));
    m_offerProblem = new WarningRow;
    section->addWidget(m_accept);
    section->addWidget(m_progress);
    section->addWidget(m_offer);
    section->addWidget(m_offerProblem);
    connect(m_accept, &QPushButton::clicked, this, [recogniser = m_context.recogniser] { recogniser->acceptOffer(); });
    m_offerSection = section;
    page.addWidget(section);
}

void WelcomeView::buildEnd(QVBoxLayout &page)
{
    auto *end = m_end = new QWidget;
    auto *row = new QHBoxLayout(end);
    row->setContentsMargins(margin, sectionSpacing, margin, sectionSpacing);
    row->addWidget(TintedLabel::caption(Wording::text(whereItIs)), 1);
    auto *done = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Done")));
    done->setFont(Appearance::font(Appearance::titleSize));
    done->setDefault(true);
    row->addWidget(done, 0, Qt::AlignBottom);
    connect(done, &QPushButton::clicked, this, [this] { m_done(); });
    page.addWidget(end);
}

void WelcomeView::refresh()
{
    const QString key = m_context.settings->hotkeyDisplayName();
    m_key->setText(Wording::text(key));
    m_greeting->setText(Wording::textWithKey(greeting, key));
    m_field->setPlaceholderText(Wording::textWithKey(
        QT_TRANSLATE_NOOP("Talmo", "Click here, hold %1 and say: This is my first dictation."), key));
    // The desktop's limits say the same more exactly, with what to do.
    const bool isTold = m_context.permissions->accessibilityGranted() || !m_context.limits.isEmpty();
    m_missing->setText(isTold ? QString()
                              : Wording::text(QT_TRANSLATE_NOOP("Talmo", "This desktop does not let Talmo type into "
                                                                         "other programs.")));
    refreshOffer();
}

void WelcomeView::refreshOffer()
{
    if (!m_context.recogniser) {
        return;
    }
    const auto offer = m_context.recogniser->offer();
    const auto installation = m_context.recogniser->installation();
    const QString problem = Wording::errorText(m_context.recogniser->problem());
    m_accept->setVisible(offer.has_value());
    m_progress->setVisible(installation.has_value());
    if (installation) {
        m_progress->setRange(0, installation->share ? progressSteps : 0);
        m_progress->setValue(static_cast<int>(installation->share.value_or(0) * progressSteps));
    }
    m_offer->setText(installation ? installation->description : offer ? offer->detail : QString());
    m_offer->setVisible(!m_offer->text().isEmpty());
    m_offerProblem->setText(problem);
    m_offerSection->setVisible(offer || installation || !problem.isEmpty());
}

} // namespace talmo
