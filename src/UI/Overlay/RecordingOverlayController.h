#pragma once

#include "App/Services/PipelineServices.h"
#include "UI/Overlay/OverlayPanel.h"
#include "UI/Overlay/ScreenSource.h"

#include <QObject>
#include <QRect>

#include <memory>

namespace talmo {

class DictationNotice;
class RecordingOverlay;
class TalmoCoordinator;

/// Creates, places, shows and hides the overlay. Main thread.
class RecordingOverlayController final : public OverlayService {
public:
    static constexpr int smallestHeight = 50;
    /// From the bottom of the screen's usable area to the bottom of the card, in logical pixels.
    static constexpr int distanceFromBottom = 90;

    RecordingOverlayController(TalmoCoordinator &coordinator, PanelWindowFactory makeWindow,
                               std::shared_ptr<ScreenSource> screens,
                               std::shared_ptr<DictationNotice> notice = nullptr);
    ~RecordingOverlayController() override;

    /// Sizes and positions the card for its current content, on the screen under the pointer.
    void show() override;
    void hide() override;
    /// Does nothing without a screen; a card shown without one is positioned when a screen is added.
    void position(PanelWindow &panel);

private:
    QSize clampedContentSize() const;
    QRect frameFor(QSize size) const;
    void followContent();
    void placeIfStillUnplaced();

    TalmoCoordinator &m_coordinator;
    PanelWindowFactory m_makeWindow;
    std::shared_ptr<ScreenSource> m_screens;
    std::shared_ptr<DictationNotice> m_notice;
    std::unique_ptr<OverlayPanel> m_panel;
    RecordingOverlay *m_content = nullptr; ///< Owned by the panel.
    bool m_isPlaced = false;
    int m_doubledMiddle = 0;
    int m_bottom = 0;
    QObject m_receiver; ///< Disconnects from the screens when the controller is destroyed.
};

} // namespace talmo
