#include "UI/Settings/RecogniserSection.h"

#include "UI/Accessibility/AccessibleName.h"
#include "UI/Picker.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

const char *const sectionTitle = QT_TRANSLATE_NOOP("Talmo", "Recogniser");
const char *const liveTitle = QT_TRANSLATE_NOOP("Talmo", "Live text");
const char *const finalTitle = QT_TRANSLATE_NOOP("Talmo", "Final text");
const char *const liveCaption =
    QT_TRANSLATE_NOOP("Talmo", "The live text is shown while you speak. The final text replaces it and is inserted.");
const char *const modelTitle = QT_TRANSLATE_NOOP("Talmo", "Model");
const char *const choiceCaption = QT_TRANSLATE_NOOP(
    "Talmo", "Speech is recognised on this computer whichever recogniser you choose; the network is used only to "
             "download models.");

constexpr int progressSteps = 1000;
constexpr int progressHeight = 9;

/// Updates the entries of a picker, keeping the selection if it still exists.
void fill(QComboBox &picker, const QList<RecogniserSettings::Choice> &entries, const QString &selected)
{
    const QSignalBlocker blocker(picker);
    for (int index = 0; index < entries.size(); ++index) {
        if (index == picker.count()) {
            picker.addItem({});
        }
        picker.setItemText(index, entries[index].title);
        picker.setItemData(index, entries[index].id);
    }
    while (picker.count() > entries.size()) {
        picker.removeItem(picker.count() - 1);
    }
    picker.setCurrentIndex(std::max(picker.findData(selected), 0));
}

/// What names the control of a row.
QLabel *titleIn(const QHBoxLayout &row)
{
    return qobject_cast<QLabel *>(row.itemAt(0)->widget());
}

} // namespace

RecogniserSection::RecogniserSection(std::shared_ptr<RecogniserSettings> settings)
    : m_settings(std::move(settings)),
      m_watcher(*m_settings, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection(Wording::text(sectionTitle));
    buildChoice(*section);
    buildOffer(*section);
    section->addSeparator();
    buildModels(*section);
    buildInstallation(*section);
    layout->addWidget(section);
    refresh();
}

void RecogniserSection::buildChoice(SettingsSection &section)
{
    m_live = Picker::make(Wording::text(liveTitle));
    m_liveTitle = titleIn(*section.addRow(m_live->accessibleName(), m_live));
    m_choice = Picker::make(Wording::text(sectionTitle));
    m_choiceTitle = titleIn(*section.addRow(m_choice->accessibleName(), m_choice));
    m_liveCaption = TintedLabel::caption(Wording::text(liveCaption));
    section.addWidget(m_liveCaption);
    m_choiceProblem = new WarningRow;
    section.addWidget(m_choiceProblem);
    section.addCaption(Wording::text(choiceCaption));
    connect(m_live, &QComboBox::activated, this, [this] { m_settings->chooseLive(m_live->currentData().toString()); });
    connect(m_choice, &QComboBox::activated, this, [this] { m_settings->choose(m_choice->currentData().toString()); });
}

void RecogniserSection::buildOffer(SettingsSection &section)
{
    m_accept = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Get better recognition")));
    m_accept->setFont(Appearance::font(Appearance::titleSize));
    m_offer = TintedLabel::caption({});
    section.addWidget(m_accept);
    section.addWidget(m_offer);
    connect(m_accept, &QPushButton::clicked, this, [this] { m_settings->acceptOffer(); });
}

void RecogniserSection::buildModels(SettingsSection &section)
{
    m_models = Picker::make(Wording::text(modelTitle));
    auto *row = section.addRow(m_models->accessibleName(), m_models);
    m_action = new QPushButton;
    m_action->setFont(Appearance::font(Appearance::titleSize));
    row->addWidget(m_action);
    m_detail = TintedLabel::caption({});
    section.addWidget(m_detail);
    m_licence = new QLabel;
    m_licence->setFont(Appearance::font(Appearance::captionSize));
    m_licence->setTextFormat(Qt::RichText); // For the link; names are escaped.
    m_licence->setOpenExternalLinks(true);
    m_licence->setTextInteractionFlags(Qt::TextBrowserInteraction);
    section.addWidget(m_licence);
    connect(m_models, &QComboBox::activated, this, [this] { refreshModel(); });
    connect(m_action, &QPushButton::clicked, this, [this] { act(); });
}

void RecogniserSection::buildInstallation(SettingsSection &section)
{
    m_progress = new QProgressBar;
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(progressHeight);
    m_progress->setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Installation")));
    section.addWidget(m_progress);
    m_progressText = TintedLabel::caption({});
    section.addWidget(m_progressText);
    m_modelProblem = new WarningRow;
    section.addWidget(m_modelProblem);
}

QString RecogniserSection::selectedModel() const
{
    return m_models->currentData().toString();
}

/// Performs the action named on the button.
void RecogniserSection::act()
{
    const QString id = selectedModel();
    const auto models = m_settings->models();
    const bool isInstalled = std::any_of(models.begin(), models.end(), [&id](const RecogniserSettings::Model &model) {
        return model.id == id && model.isInstalled;
    });
    const auto installation = m_settings->installation();
    if (installation && installation->modelId == id) {
        m_settings->cancelInstallation();
    } else if (isInstalled) {
        m_settings->remove(id);
    } else {
        m_settings->install(id);
    }
}

void RecogniserSection::refresh()
{
    refreshChoice();
    refreshOffer();
    QList<RecogniserSettings::Choice> entries;
    for (const auto &model : m_settings->models()) {
        entries.append({model.id, model.title});
    }
    const auto installation = m_settings->installation();
    const bool begins = installation && installation->modelId != std::exchange(m_installing, installation->modelId);
    if (!installation) {
        m_installing.clear();
    }
    // Its row has the button that cancels.
    fill(*m_models, entries, begins ? installation->modelId : selectedModel());
    refreshModel();
    refreshInstallation();
}

void RecogniserSection::refreshChoice()
{
    const auto liveChoices = m_settings->liveChoices();
    const bool isChosenSeparately = !liveChoices.isEmpty();
    fill(*m_live, liveChoices, m_settings->liveChoice());
    m_live->setVisible(isChosenSeparately);
    m_liveTitle->setVisible(isChosenSeparately);
    m_liveCaption->setVisible(isChosenSeparately);
    const QString title = Wording::text(isChosenSeparately ? finalTitle : sectionTitle);
    m_choiceTitle->setText(title);
    m_choice->setAccessibleName(title);
    fill(*m_choice, m_settings->choices(), m_settings->choice());
    m_choiceProblem->setText(m_settings->choiceProblem());
}

void RecogniserSection::refreshOffer()
{
    const auto offer = m_settings->offer();
    m_accept->setVisible(offer.has_value());
    m_offer->setVisible(offer.has_value());
    if (offer) {
        m_offer->setText(offer->detail);
        describeAccessibly(*m_accept, offer->detail);
    }
}

void RecogniserSection::refreshModel()
{
    const auto installation = m_settings->installation();
    const QString id = selectedModel();
    for (const auto &model : m_settings->models()) {
        if (model.id != id) {
            continue;
        }
        const bool isUnderWay = installation && installation->modelId == id;
        m_action->setText(isUnderWay          ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Cancel"))
                          : model.isInstalled ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Remove"))
                                              : Wording::text(QT_TRANSLATE_NOOP("Talmo", "Install")));
        m_action->setEnabled(isUnderWay || (!installation && (model.isInstalled || m_settings->obstacle().isEmpty())));
        m_detail->setText(model.detail);
        m_detail->setVisible(!model.detail.isEmpty());
        const QString licence = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Licence: %1"));
        m_licence->setText(
            licence.arg(model.licenceAddress.isEmpty()
                            ? model.licence.toHtmlEscaped()
                            : QStringLiteral("<a href=\"%1\">%2</a>")
                                  .arg(QString::fromUtf8(model.licenceAddress.toEncoded()).toHtmlEscaped(),
                                       model.licence.toHtmlEscaped())));
        m_licence->setVisible(!model.licence.isEmpty());
    }
}

void RecogniserSection::refreshInstallation()
{
    const auto installation = m_settings->installation();
    m_progress->setVisible(installation.has_value());
    m_progressText->setVisible(installation.has_value());
    if (installation) {
        // With a maximum of 0 the bar shows activity without progress.
        m_progress->setRange(0, installation->share ? progressSteps : 0);
        m_progress->setValue(static_cast<int>(installation->share.value_or(0) * progressSteps));
        m_progressText->setText(installation->description);
    }
    m_modelProblem->setText(m_settings->problem().isEmpty() ? m_settings->obstacle()
                                                            : Wording::errorText(m_settings->problem()));
}

} // namespace talmo
