#include "UI/Style/FocusRing.h"

#include "UI/Style/Appearance.h"

#include <QApplication>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QTabBar>

namespace talmo {

namespace {

constexpr int thickness = 2;
constexpr int distance = 1;
constexpr qreal radius = 5;

/// Below the control, the frame would be cut off at the edges of the row that the control is in.
class RingStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override
    {
        return hint == SH_FocusFrame_AboveWidget ? 1 : QProxyStyle::styleHint(hint, option, widget, result);
    }
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        const bool isMargin = metric == PM_FocusFrameHMargin || metric == PM_FocusFrameVMargin;
        return isMargin ? thickness + distance : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

RingStyle *ringStyle()
{
    static QPointer<RingStyle> style;
    if (!style) {
        style = new RingStyle;
        style->setParent(QApplication::instance());
    }
    return style;
}

class Frame final : public QFocusFrame {
public:
    explicit Frame(QWidget *window)
        : QFocusFrame(window)
    {
        setStyle(ringStyle());
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor colour = Appearance::legible(palette().color(QPalette::Highlight),
                                                  palette().color(QPalette::Window), Appearance::shapeContrast);
        painter.setPen(QPen(colour, thickness));
        constexpr qreal inset = thickness / 2.0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
    }
};

} // namespace

FocusRing::FocusRing(QWidget *window)
    : QObject(window),
      m_window(window)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { follow(now); });
}

const QFocusFrame *FocusRing::frame() const
{
    return m_frame && m_frame->widget() != nullptr ? m_frame.data() : nullptr;
}

/// The tabs and the window itself show it in a way of their own.
void FocusRing::follow(QWidget *control)
{
    const bool isInside = control != nullptr && control != m_window && m_window->isAncestorOf(control);
    const bool isByKeyboard = m_window->testAttribute(Qt::WA_KeyboardFocusChange);
    if (!isInside || !isByKeyboard || qobject_cast<QTabBar *>(control) != nullptr) {
        if (m_frame) {
            m_frame->setWidget(nullptr);
        }
        return;
    }
    if (!m_frame) {
        m_frame = new Frame(m_window);
    }
    m_frame->setWidget(control);
    m_frame->show(); // Qt hides it if the control is still to be scrolled into view.
}

} // namespace talmo
