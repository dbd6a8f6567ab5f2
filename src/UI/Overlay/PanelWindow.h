#pragma once

#include <QRect>
#include <QSize>

#include <functional>
#include <memory>

class QWidget;

namespace talmo {

/// The properties of a floating panel.
struct PanelOptions {
    QRect contentRect;
    /// Bits; see OverlayPanel.
    unsigned styleMask = 0;
    unsigned backingStore = 0;
    bool isDeferred = false;
    bool isOpaque = false;
    bool hasShadow = true;
    int level = 0;
    /// Bits; see OverlayPanel.
    unsigned collectionBehavior = 0;
    bool isMovableByBackground = false;
    bool hidesOnDeactivate = false;
    /// Takes the keyboard while it is shown, and closes on a click elsewhere or on Escape. Otherwise it never takes the
    /// keyboard, and clicks go through it.
    bool canBecomeKey = false;
    /// The largest size of the content, if known: the window can then keep its size while the content grows and
    /// shrinks.
    QSize largestContentSize;
};

/// A card-shaped window with a shadow that floats above other windows and does not activate Talmo. Main thread.
class PanelWindow {
public:
    virtual ~PanelWindow() = default;

    /// The frame of the card, without its shadow, in logical pixels.
    virtual void setFrame(const QRect &frame) = 0;
    virtual QRect frame() const = 0;
    /// Shows it above all other windows, without activating Talmo.
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
    virtual bool isVisible() const = 0;
};

/// Creates a panel and transfers ownership of its content to it.
using PanelWindowFactory = std::function<std::unique_ptr<PanelWindow>(const PanelOptions &, QWidget *content)>;

} // namespace talmo
