#pragma once

#include "App/DictationNotice.h"
#include "App/TalmoCoordinator.h"
#include "Input/Hotkey/CancelKey.h"
#include "Input/Hotkey/FnGestureRecognizer.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// Takes the cancel key while a recording runs, discards the recording when it is pressed, and has the card say which
/// keys end a hands-free recording. Main thread.
class DictationCancellation final : public QObject {
    Q_OBJECT

public:
    struct Parts {
        std::shared_ptr<CancelKey> key;
        std::shared_ptr<DictationNotice> notice;
        /// The gesture behind the recording; nullopt if it was started from a menu.
        std::function<std::optional<ActiveMode>()> gesture;
        /// Ends that gesture, so that the next press starts a new one.
        std::function<void()> endGesture;
        /// The key to hold, as users know it.
        std::function<QString()> hotkeyName;
    };

    /// The coordinator is the parent, and so outlives this.
    DictationCancellation(Parts parts, TalmoCoordinator &coordinator);
    ~DictationCancellation() override;

    /// Discards the recording; does nothing if there is none.
    void discard();

private:
    void stateMayHaveChanged();
    void showHint(bool isGrabbed);

    Parts m_parts;
    TalmoCoordinator &m_coordinator;
    bool m_isRecording = false;
};

} // namespace talmo
