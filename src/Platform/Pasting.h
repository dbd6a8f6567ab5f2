#pragma once

#include "Input/Permissions/InputTrust.h"
#include "Insertion/FocusedField.h"
#include "Insertion/KeyEventPoster.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"

#include <QFuture>

#include <functional>
#include <memory>

namespace talmo {

/// The part of a desktop that a program without windows needs in order to paste.
struct Pasting {
    std::shared_ptr<Pasteboard> pasteboard;
    std::shared_ptr<PasteWitness> witness;
    std::shared_ptr<KeyEventPoster> keyPoster;
    std::shared_ptr<InputTrust> inputTrust;
    std::shared_ptr<FocusedField> focusedField;
    /// Restores the clipboard. Nothing can be pasted afterwards.
    std::function<QFuture<void>()> shutDown;
    /// Finishes once Talmo no longer owns the clipboard.
    std::function<QFuture<void>()> ownershipLost;
    /// Sets what is called, on any thread, if some of the clipboard's content cannot be saved.
    std::function<void(std::function<void()>)> setOnLoss;
};

/// Throws Error if there is no desktop.
Pasting openPasting();

} // namespace talmo
