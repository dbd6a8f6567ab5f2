#include "UI/Overlay/OverlayPanel.h"

namespace talmo {

static_assert(OverlayPanel::collectionBehavior == 337);
static_assert(OverlayPanel::nonactivatingPanel == 128);

OverlayPanel::OverlayPanel(const PanelWindowFactory &makeWindow, const PanelOptions &options, QWidget *content)
    : m_window(makeWindow(options, content))
{
}

PanelOptions OverlayPanel::options(QSize largestContentSize)
{
    PanelOptions options;
    options.contentRect = QRect(QPoint(0, 0), initialSize);
    options.styleMask = nonactivatingPanel;
    options.backingStore = buffered;
    options.isDeferred = false;
    options.isOpaque = false;
    options.hasShadow = true;
    options.level = floatingLevel;
    options.collectionBehavior = collectionBehavior;
    options.isMovableByBackground = false;
    options.hidesOnDeactivate = false;
    options.canBecomeKey = canBecomeKeyWindow();
    options.largestContentSize = largestContentSize;
    return options;
}

} // namespace talmo
