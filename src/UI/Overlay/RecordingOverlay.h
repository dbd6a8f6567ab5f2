#pragma once

#include "App/DictationNotice.h"
#include "App/TalmoState.h"
#include "UI/ChangeWatcher.h"
#include "UI/Overlay/DetailText.h"

#include <QColor>
#include <QWidget>

#include <functional>
#include <memory>

namespace talmo {

class TalmoCoordinator;

/// The texts of the overlay in a given state.
struct OverlayContents {
    QColor dot;
    QString title;
    QString detail;
    /// At the end of the title's line, dimmed.
    QString hint;
    bool operator==(const OverlayContents &) const = default;

    /// The transcript is shown verbatim; all other texts are looked up for this platform.
    static OverlayContents make(const TalmoState &state, const QString &liveTranscript);
    /// The same with a notice: it fills the detail line in states that have none of their own, shows its hint while
    /// recording, and is the title of a card that is about to be hidden.
    static OverlayContents make(const TalmoState &state, const QString &liveTranscript, const DictationNotice &notice);
};

/// The content of the overlay: a coloured dot and a title, and below it the live transcript or the error.
class RecordingOverlay final : public QWidget {
public:
    /// At an ordinary system font.
    static constexpr int smallestWidth = 220;
    static constexpr int largestWidth = 360;

    /// Without a notice, only the coordinator's state is shown.
    explicit RecordingOverlay(const TalmoCoordinator &coordinator, std::shared_ptr<DictationNotice> notice = nullptr);

    /// Refreshes from the coordinator at once; otherwise that happens after every change.
    void refresh();
    const OverlayContents &contents() const { return m_contents; }
    /// The visible part of the detail.
    const QString &shownDetail() const { return m_detail.shownText(); }

    /// The contents' own, or where the rest of a cut error is.
    QString hint() const;

    QSize idealSize() const;
    /// The size that no content exceeds.
    QSize largestSize() const;
    void setOnIdealSizeChanged(std::function<void()> callback) { m_onIdealSizeChanged = std::move(callback); }

    QSize sizeHint() const override { return idealSize(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    int titleHeight() const;
    int titleWidth() const;
    int hintWidth() const;
    /// The flags for a text at this edge, mirrored like the areas.
    int aligned(Qt::Alignment edge) const;
    /// Mirrored if the language is written from right to left.
    QRect mirrored(const QRect &area) const;
    void paintHint(QPainter &painter, const QRect &titleArea) const;

    const TalmoCoordinator &m_coordinator;
    std::shared_ptr<DictationNotice> m_notice;
    OverlayContents m_contents;
    DetailText m_detail;
    std::function<void()> m_onIdealSizeChanged;
    ChangeWatcher m_watcher;
    std::unique_ptr<ChangeWatcher> m_noticeWatcher;
};

} // namespace talmo
