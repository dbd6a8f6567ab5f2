#pragma once

#include "Insertion/PasteStyle.h"

#include <memory>
#include <vector>

namespace talmo {

class WaylandSession;

/// A keyboard by which Talmo posts the paste shortcut. The session's thread only.
class ChordKeyboard {
public:
    virtual ~ChordKeyboard() = default;

    /// Presses these keys in order and releases them in the opposite one; codes as the kernel's. Sent with the
    /// session's next flush.
    virtual void post(const std::vector<quint32> &keys) = 0;

    /// The keys of a style's shortcut.
    static std::vector<quint32> keysOf(PasteStyle style);

    /// Whether the compositor lets Talmo use any of them. Any thread.
    static bool isOffered(const WaylandSession &session);
    /// Uses virtual-keyboard, or else KDE's fake-input, if the compositor permits it; null if neither.
    static std::unique_ptr<ChordKeyboard> open(WaylandSession &session);
};

} // namespace talmo
