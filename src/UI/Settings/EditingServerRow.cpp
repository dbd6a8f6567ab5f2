#include "UI/Settings/EditingServerRow.h"

#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace talmo {

namespace {

constexpr int symbolSpacing = 6;

const char *const usedText = QT_TRANSLATE_NOOP("Talmo", "Your text is sent to %1 at %2.");
const char *const unusedText = QT_TRANSLATE_NOOP("Talmo", "While this is off, no text is sent to %1 at %2.");
const char *const refusedText =
    QT_TRANSLATE_NOOP("Talmo", "Another user's program is listening at %1. Your text is not sent to it.");

const char *const fasterText = QT_TRANSLATE_NOOP(
    "Talmo", "Editing took longer than %1 seconds three times. A smaller model is faster, for example %2 (%3 MB, %4).");
const char *const slowText =
    QT_TRANSLATE_NOOP("Talmo", "Editing took longer than %1 seconds three times. It is faster with a smaller model, or "
                               "with AI cleanup turned off.");

QString sentenceFor(const EditingServer::Slowness &slowness)
{
    return slowness.fasterModel.isEmpty() ? Wording::text(slowText).arg(slowness.seconds)
                                          : Wording::text(fasterText)
                                                .arg(QString::number(slowness.seconds), slowness.fasterModel,
                                                     QString::number(slowness.fasterMegabytes), slowness.fasterLicence);
}

/// A server may give its model any name; one as long as a line is too wide.
QString shortened(const QString &name)
{
    constexpr qsizetype longest = 48;
    return name.size() > longest ? name.left(longest - 1) + QStringLiteral("…") : name;
}

} // namespace

EditingServerRow::EditingServerRow()
    : m_symbol(new SymbolLabel(QStringLiteral("sparkles"), &Appearance::secondary)),
      m_text(TintedLabel::caption({})),
      m_slowness(new WarningRow),
      m_refusal(new WarningRow)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, 2, 0, 0);
    row->setSpacing(symbolSpacing);
    row->addWidget(m_symbol, 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
    layout->addLayout(row);
    layout->addWidget(m_slowness);
    layout->addWidget(m_refusal);
}

void EditingServerRow::setServer(const EditingServer &server, bool isUsed)
{
    const bool isThere = !server.model.isEmpty();
    m_text->setText(isThere ? Wording::text(isUsed ? usedText : unusedText).arg(shortened(server.model), server.place)
                            : QString());
    m_text->setVisible(isThere);
    m_symbol->setVisible(isThere);
    m_slowness->setText(isThere && isUsed && server.slowness ? sentenceFor(*server.slowness) : QString());
    m_refusal->setText(server.refused.isEmpty()
                           ? QString()
                           : Wording::text(refusedText).arg(server.refused.join(QStringLiteral(", "))));
    setVisible(isThere || !server.refused.isEmpty());
}

} // namespace talmo
