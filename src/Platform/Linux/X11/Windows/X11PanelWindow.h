#pragma once

#include "UI/Overlay/PanelWindow.h"

#include <QAbstractNativeEventFilter>
#include <QWidget>

namespace talmo {

/// A panel on X11: a window that the window manager does not handle, and which is therefore on every desktop, above
/// full-screen windows and in no task bar. One that becomes key grabs the keyboard and the pointer as menus do; the
/// frontmost window stays the same.
class X11PanelWindow final : public QWidget, public PanelWindow, private QAbstractNativeEventFilter {
public:
    X11PanelWindow(const PanelOptions &options, QWidget *content);
    ~X11PanelWindow() override;

    static std::unique_ptr<PanelWindow> make(const PanelOptions &options, QWidget *content);

    void setFrame(const QRect &frame) override;
    QRect frame() const override { return m_frame; }
    void orderFrontRegardless() override;
    void orderOut() override;
    bool isVisible() const override { return QWidget::isVisible(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void layOut();
    void applyShape();
    void declareShadow();
    QRect cardInWindow() const;

    PanelOptions m_options;
    QWidget *m_content;
    QRect m_frame;
    bool m_isComposited = false;
};

} // namespace talmo
