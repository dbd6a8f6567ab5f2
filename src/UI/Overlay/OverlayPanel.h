#pragma once

#include "UI/Overlay/PanelWindow.h"

namespace talmo {

/// The window of the overlay, which takes no input.
class OverlayPanel {
public:
    static constexpr QSize initialSize{320, 70};
    static constexpr unsigned nonactivatingPanel = 1U << 7;
    static constexpr unsigned buffered = 2;
    static constexpr int floatingLevel = 3;
    static constexpr unsigned canJoinAllSpaces = 1U << 0;
    static constexpr unsigned stationary = 1U << 4;
    static constexpr unsigned ignoresCycle = 1U << 6;
    static constexpr unsigned fullScreenAuxiliary = 1U << 8;
    static constexpr unsigned collectionBehavior = canJoinAllSpaces | stationary | ignoresCycle | fullScreenAuxiliary;

    OverlayPanel(const PanelWindowFactory &makeWindow, const PanelOptions &options, QWidget *content);

    static constexpr bool canBecomeKeyWindow() { return false; }
    static constexpr bool canBecomeMainWindow() { return false; }

    /// The options the overlay's panel is created with.
    static PanelOptions options(QSize largestContentSize);

    PanelWindow &window() { return *m_window; }

private:
    std::unique_ptr<PanelWindow> m_window;
};

} // namespace talmo
