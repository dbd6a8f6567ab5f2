#include "UI/Overlay/RecordingOverlay.h"

#include "App/TalmoCoordinator.h"
#include "UI/Accessibility/AccessibleName.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Wording.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr int spacing = 6;
/// At least this much room between the title and the hint.
constexpr int hintGap = 16;
constexpr int mostDetailLines = 2;
constexpr QMargins padding(14, 10, 14, 10);

int largest()
{
    return Appearance::scaled(RecordingOverlay::largestWidth);
}

int dotSize()
{
    constexpr int ordinary = 8;
    return Appearance::scaled(ordinary);
}

QFont titleFont()
{
    return Appearance::font(Appearance::titleSize, QFont::DemiBold);
}

QFont detailFont()
{
    return Appearance::font(Appearance::detailSize);
}

} // namespace

OverlayContents OverlayContents::make(const TalmoState &state, const QString &liveTranscript)
{
    switch (state.which()) {
    case TalmoState::Case::Idle:
        break;
    case TalmoState::Case::Recording:
        return {QColor(0xff, 0x3b, 0x30), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Listening")), liveTranscript, {}};
    case TalmoState::Case::Processing:
        return {QColor(0x0a, 0x84, 0xff), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Cleaning up…")), {}, {}};
    case TalmoState::Case::Inserting:
        return {QColor(0x30, 0xb1, 0x4e), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Inserting…")), {}, {}};
    case TalmoState::Case::Error:
        return {QColor(0xff, 0x95, 0x00),
                Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo")),
                Wording::errorText(state.message()),
                {}};
    }
    return {Qt::transparent, {}, {}, {}};
}

OverlayContents OverlayContents::make(const TalmoState &state, const QString &liveTranscript,
                                      const DictationNotice &notice)
{
    auto contents = make(state, liveTranscript);
    const bool isBusy = state.is(TalmoState::Case::Processing) || state.is(TalmoState::Case::Inserting);
    if (isBusy && !notice.text().isEmpty()) {
        contents.detail = Wording::text(notice.text());
    } else if (state.is(TalmoState::Case::Recording) && !notice.hint().isEmpty()) {
        contents.hint = Wording::textWithKey(notice.hint().toUtf8().constData(), notice.hintKey());
    } else if (state.is(TalmoState::Case::Idle) && !notice.farewell().isEmpty()) {
        contents.dot = QColor(0x8e, 0x8e, 0x93);
        contents.title = Wording::text(notice.farewell());
    }
    return contents;
}

RecordingOverlay::RecordingOverlay(const TalmoCoordinator &coordinator, std::shared_ptr<DictationNotice> notice)
    : m_coordinator(coordinator),
      m_notice(std::move(notice)),
      m_watcher(coordinator, [this] { refresh(); }, this)
{
    if (m_notice) {
        m_noticeWatcher = std::make_unique<ChangeWatcher>(*m_notice, [this] { refresh(); }, this);
    }
    setFocusPolicy(Qt::NoFocus);
    refresh();
}

void RecordingOverlay::refresh()
{
    const auto &state = m_coordinator.state();
    const QString transcript = m_coordinator.liveTranscript();
    const auto contents =
        m_notice ? OverlayContents::make(state, transcript, *m_notice) : OverlayContents::make(state, transcript);
    if (contents == m_contents) {
        return;
    }
    m_contents = contents;
    layOut();
    nameAccessibly(*this, m_contents.title);
    update();
}

void RecordingOverlay::layOut()
{
    const QSize before = idealSize();
    const int textWidth = largest() - padding.left() - padding.right();
    m_detail = m_contents.detail.isEmpty() ? DetailText()
                                           : DetailText(m_contents.detail, detailFont(), textWidth, mostDetailLines);
    if (idealSize() != before && m_onIdealSizeChanged) {
        m_onIdealSizeChanged();
    }
}

int RecordingOverlay::titleHeight() const
{
    return std::max(dotSize(), QFontMetrics(titleFont()).height());
}

int RecordingOverlay::titleWidth() const
{
    return QFontMetrics(titleFont()).horizontalAdvance(m_contents.title);
}

QString RecordingOverlay::hint() const
{
    const bool isCutError = m_detail.isCut() && m_coordinator.state().is(TalmoState::Case::Error);
    return isCutError ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "Details in the menu")) : m_contents.hint;
}

int RecordingOverlay::hintWidth() const
{
    return QFontMetrics(detailFont()).horizontalAdvance(hint());
}

QSize RecordingOverlay::idealSize() const
{
    const int hint = hintWidth() == 0 ? 0 : hintGap + hintWidth();
    const int contentWidth = std::max(dotSize() + spacing + titleWidth() + hint, m_detail.size().width());
    const int detailHeight = m_detail.isEmpty() ? 0 : spacing + m_detail.size().height();
    return {std::clamp(contentWidth + padding.left() + padding.right(), Appearance::scaled(smallestWidth), largest()),
            titleHeight() + detailHeight + padding.top() + padding.bottom()};
}

QSize RecordingOverlay::largestSize() const
{
    return {largest(), titleHeight() + spacing + mostDetailLines * DetailText::lineHeight(detailFont()) +
                           padding.top() + padding.bottom()};
}

void RecordingOverlay::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange) {
        layOut();
    }
    QWidget::changeEvent(event);
}

void RecordingOverlay::paintHint(QPainter &painter, const QRect &titleArea) const
{
    const int room = titleArea.width() - titleWidth() - hintGap;
    painter.setFont(detailFont());
    painter.setPen(Appearance::secondary(palette()));
    const QString shown = QFontMetrics(detailFont()).elidedText(hint(), Qt::ElideRight, std::max(0, room));
    painter.drawText(titleArea, aligned(Qt::AlignRight), shown);
}

int RecordingOverlay::aligned(Qt::Alignment edge) const
{
    return static_cast<int>(Qt::AlignVCenter | QStyle::visualAlignment(layoutDirection(), edge));
}

QRect RecordingOverlay::mirrored(const QRect &area) const
{
    return QStyle::visualRect(layoutDirection(), rect(), area);
}

void RecordingOverlay::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Centres the content in a card that is higher than needed.
    const int slack = std::max(0, height() - idealSize().height());
    const QRect area = rect().marginsRemoved(padding).translated(0, slack / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_contents.dot);
    const int middle = area.top() + titleHeight() / 2;
    const int dot = dotSize();
    painter.drawEllipse(QRectF(mirrored(QRect(area.left(), middle - dot / 2, dot, dot))));

    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(titleFont());
    const QRect titleArea = mirrored(
        QRect(area.left() + dotSize() + spacing, area.top(), area.width() - dotSize() - spacing, titleHeight()));
    const QString title = QFontMetrics(titleFont()).elidedText(m_contents.title, Qt::ElideRight, titleArea.width());
    painter.drawText(titleArea, aligned(Qt::AlignLeft), title);
    paintHint(painter, titleArea);
    m_detail.paint(painter, QPointF(area.left(), area.top() + titleHeight() + spacing), area.width(),
                   Appearance::secondary(palette()));
}

} // namespace talmo
