#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"
#include "UI/Overlay/PanelWindow.h"

#include <QWidget>

#include <memory>

namespace talmo {

class LayerSurface;

/// The overlay on compositors with wlr-layer-shell: the content is drawn into a picture, which the session's thread
/// shows. The compositor decides where on the output it is, except for its distance from the lower edge. Main thread.
class LayerPanelWindow final : public QWidget, public PanelWindow {
public:
    LayerPanelWindow(std::shared_ptr<WaylandSession> session, const PanelOptions &options, QWidget *content);
    ~LayerPanelWindow() override;

    void setFrame(const QRect &frame) override;
    QRect frame() const override { return m_frame; }
    void orderFrontRegardless() override;
    void orderOut() override;
    bool isVisible() const override { return QWidget::isVisible(); }

protected:
    bool event(QEvent *event) override;

private:
    QSize surfaceSize() const;
    void layOut();
    void draw();
    void setScale(double scale);

    std::shared_ptr<WaylandSession> m_session;
    /// Used and destroyed on the session's thread.
    std::shared_ptr<LayerSurface> m_surface;
    QSize m_largestContentSize;
    QWidget *m_content;
    QRect m_frame;
    double m_scale = 1;
};

} // namespace talmo
