#pragma once

#include "App/DictationNotice.h"
#include "App/Services/PipelineServices.h"
#include "Base/Clock.h"

#include <QCoro/QCoroTask>

#include <memory>
#include <stop_token>

namespace talmo {

/// Keeps the card for a moment after a dictation if the notice has a last word to read. Main thread.
class LingeringOverlay final : public OverlayService {
public:
    /// Long enough to read a word.
    static constexpr Duration readingTime = std::chrono::milliseconds(1200);

    LingeringOverlay(std::shared_ptr<OverlayService> overlay, std::shared_ptr<DictationNotice> notice,
                     std::shared_ptr<Clock> clock);
    ~LingeringOverlay() override;

    void show() override;
    void hide() override;

private:
    static QCoro::Task<void> hideLater(std::weak_ptr<OverlayService> overlay, std::shared_ptr<DictationNotice> notice,
                                       QFuture<void> time, std::stop_token stop);

    std::shared_ptr<OverlayService> m_overlay;
    std::shared_ptr<DictationNotice> m_notice;
    std::shared_ptr<Clock> m_clock;
    std::stop_source m_lingering;
};

} // namespace talmo
