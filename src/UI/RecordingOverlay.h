#pragma once

#include "App/TalmoState.h"
#include "UI/ChangeWatcher.h"
#include "UI/DetailText.h"

#include <QColor>
#include <QWidget>

#include <functional>

namespace talmo {

class TalmoCoordinator;

/// What the overlay says in a state.
struct OverlayContents {
    QColor dot;
    QString title;
    QString detail;
    bool operator==(const OverlayContents &) const = default;

    /// The transcript is the user's own and shown as it is; everything else is worded for this platform.
    static OverlayContents make(const TalmoState &state, const QString &liveTranscript);
};

/// The content of the overlay: a coloured dot and a title, and below it what is being heard or what went wrong.
class RecordingOverlay final : public QWidget {
public:
    static constexpr int smallestWidth = 220;
    static constexpr int largestWidth = 360;

    explicit RecordingOverlay(const TalmoCoordinator &coordinator);

    /// Reads the coordinator at once; otherwise that happens after every change.
    void reread();
    const OverlayContents &contents() const { return m_contents; }
    /// What is seen of the detail.
    const QString &shownDetail() const { return m_detail.shownText(); }

    QSize idealSize() const;
    /// No content needs more.
    QSize largestSize() const;
    void setOnIdealSizeChanged(std::function<void()> callback) { m_onIdealSizeChanged = std::move(callback); }

    QSize sizeHint() const override { return idealSize(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    int titleHeight() const;

    const TalmoCoordinator &m_coordinator;
    OverlayContents m_contents;
    DetailText m_detail;
    std::function<void()> m_onIdealSizeChanged;
    ChangeWatcher m_watcher;
};

} // namespace talmo
