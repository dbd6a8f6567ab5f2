#include "Platform/Linux/Wayland/Windows/LayerPanelWindow.h"

#include "Platform/Linux/Wayland/Windows/LayerSurface.h"
#include "UI/Overlay/RecordingOverlayController.h"
#include "UI/Style/Card.h"
#include "UI/Style/Wording.h"

#include <QEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace talmo {

LayerPanelWindow::LayerPanelWindow(std::shared_ptr<WaylandSession> session, const PanelOptions &options,
                                   QWidget *content)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::Tool | Qt::WindowDoesNotAcceptFocus),
      m_session(std::move(session)),
      m_largestContentSize(options.largestContentSize),
      m_content(content),
      m_frame(options.contentRect)
{
    // It is laid out and repainted as if it were shown, and never is.
    setAttribute(Qt::WA_DontShowOnScreen);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_QuitOnClose, false);
    content->setParent(this);
    content->show();
    setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo"))); // The content names what changes.
    const auto onScale = [self = QPointer(this)](double scale) {
        QMetaObject::invokeMethod(qApp, [self, scale] {
            if (self) {
                self->setScale(scale);
            }
        });
    };
    m_session->executor()
        .call([this, &onScale] {
            m_surface = std::make_shared<LayerSurface>(*m_session, onScale);
            m_scale = m_surface->scale();
        })
        .waitForFinished();
}

LayerPanelWindow::~LayerPanelWindow()
{
    m_session->executor().call([surface = std::move(m_surface)]() mutable { surface.reset(); }).waitForFinished();
}

void LayerPanelWindow::setFrame(const QRect &frame)
{
    if (frame != m_frame) {
        m_frame = frame;
        layOut();
        draw();
    }
}

/// With room for the largest card, which grows upwards, and for its shadow.
QSize LayerPanelWindow::surfaceSize() const
{
    constexpr int margin = Card::shadowMargin;
    return m_largestContentSize.expandedTo(m_frame.size()) + QSize(2 * margin, 2 * margin);
}

void LayerPanelWindow::layOut()
{
    const QSize size = surfaceSize();
    resize(size);
    const QPoint corner((size.width() - m_frame.width()) / 2, size.height() - Card::shadowMargin - m_frame.height());
    m_content->setGeometry(QRect(corner, m_frame.size()));
}

void LayerPanelWindow::draw()
{
    if (!isVisible()) {
        return;
    }
    QImage image((QSizeF(size()) * m_scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    Card::paint(painter, m_content->geometry(), palette(), true);
    m_content->render(&painter, m_content->pos(), QRegion(), QWidget::DrawChildren);
    painter.end();
    m_session->executor().post([surface = m_surface, image] { surface->setImage(image); });
}

void LayerPanelWindow::setScale(double scale)
{
    m_scale = scale;
    draw();
}

bool LayerPanelWindow::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::UpdateRequest) {
        draw();
    }
    return isHandled;
}

void LayerPanelWindow::orderFrontRegardless()
{
    const bool wasVisible = isVisible();
    layOut();
    QWidget::show();
    if (!wasVisible) {
        constexpr int distance = RecordingOverlayController::distanceFromBottom - Card::shadowMargin;
        m_session->executor().post([surface = m_surface, size = surfaceSize()] { surface->show(size, distance); });
    }
    draw();
}

void LayerPanelWindow::orderOut()
{
    QWidget::hide();
    m_session->executor().post([surface = m_surface] { surface->hide(); });
}

} // namespace talmo
