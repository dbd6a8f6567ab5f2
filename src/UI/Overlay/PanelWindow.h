#pragma once

#include <QRect>
#include <QSize>

#include <functional>
#include <memory>

class QWidget;

namespace talmo {

/// What a floating panel is to be like.
struct PanelOptions {
    QRect contentRect;
    /// Bits, see OverlayPanel.
    unsigned styleMask = 0;
    unsigned backingStore = 0;
    bool isDeferred = false;
    bool isOpaque = false;
    bool hasShadow = true;
    int level = 0;
    /// Bits, see OverlayPanel.
    unsigned collectionBehavior = 0;
    bool isMovableByBackground = false;
    bool hidesOnDeactivate = false;
    /// Takes the keyboard while it is shown, and closes when a click goes elsewhere or Escape is pressed. Otherwise
    /// it never takes the keyboard, and clicks go through it.
    bool canBecomeKey = false;
    /// The size that the content never exceeds, where that is known: the window can then stay as it is while the
    /// content grows and shrinks.
    QSize largestContentSize;
};

/// A window in the shape of a card, with its shadow, that floats above others' windows and does not activate Talmo.
/// Main thread.
class PanelWindow {
public:
    virtual ~PanelWindow() = default;

    /// The card, without its shadow, in logical pixels.
    virtual void setFrame(const QRect &frame) = 0;
    virtual QRect frame() const = 0;
    /// Shows it above everything, without activating Talmo.
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
    virtual bool isVisible() const = 0;
};

/// Makes a panel around its content, which belongs to it from then on.
using PanelWindowFactory = std::function<std::unique_ptr<PanelWindow>(const PanelOptions &, QWidget *content)>;

} // namespace talmo
