#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Clock.h"
#include "Base/Error.h"
#include "Input/Permissions/InputTrust.h"
#include "Insertion/KeyEventPoster.h"
#include "Insertion/Pasteboard.h"

#include <memory>
#include <stop_token>

namespace talmo {

/// Why nothing was inserted; each case has its own message for the user.
class TextInsertionError : public Error {
public:
    enum class Case { AccessibilityNotGranted, EmptyText };

    explicit TextInsertionError(Case which);

    Case which() const { return m_case; }

private:
    Case m_case;
};

/// Inserts by pasting: puts the text on the pasteboard, posts the paste shortcut, and restores the pasteboard. One
/// insertion at a time.
class ClipboardPasteInsertionService final : public TextInsertionService {
public:
    /// The V key and the Command modifier: the paste shortcut.
    static constexpr quint16 pasteKeyCode = 9;
    static constexpr quint64 commandFlag = 0x100000;
    /// Time for the frontmost application to see the changed pasteboard.
    static constexpr Duration pasteboardChangeTime = std::chrono::milliseconds(15);
    /// Time for the frontmost application to read it.
    static constexpr Duration pasteTime = std::chrono::milliseconds(65);

    ClipboardPasteInsertionService(std::shared_ptr<Pasteboard> pasteboard, std::shared_ptr<KeyEventPoster> keyPoster,
                                   std::shared_ptr<InputTrust> inputTrust, std::shared_ptr<Clock> clock);

    QCoro::Task<void> insert(QString text) override;

    /// The same, cancellable during its two waits; steps already done are not undone.
    QCoro::Task<void> insert(QString text, std::stop_token stop);

private:
    struct Parts {
        std::shared_ptr<Pasteboard> pasteboard;
        std::shared_ptr<KeyEventPoster> keyPoster;
        std::shared_ptr<InputTrust> inputTrust;
        std::shared_ptr<Clock> clock;
    };
    static QCoro::Task<void> paste(Parts parts, QString text, std::stop_token stop);
    static void postPasteShortcut(KeyEventPoster &poster);

    Parts m_parts;
};

} // namespace talmo
