#pragma once

#include "Control/ControlSocket.h"

#include <QCoro/QCoroTask>

#include <QFuture>
#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// What the user's other programs can ask of Talmo, over any channel. Main thread.
struct ControlActions {
    /// Inserts a text; may throw Error.
    using Insert = std::function<QCoro::Task<void>(QString)>;

    Insert insert;
    std::function<void()> openSettings;
    /// Throws Error if the choice cannot be saved.
    std::function<QCoro::Task<void>(QString)> chooseRecogniser;
    /// The last dictation, or its raw transcript; nullopt if there is none.
    std::function<std::optional<QString>(bool isRaw)> lastDictation;
    /// False if there is no earlier clipboard.
    std::function<QFuture<bool>()> putEarlierClipboardBack;
    /// Pauses the dictation key or resumes it.
    std::function<void(bool isPaused)> setPaused;
    /// Moves the dictation key, or discards the recording.
    std::function<void(ControlSocket::KeyCommand)> moveKey = {};
    std::function<ControlSocket::Status()> status = {};
    /// Opens or closes the menu.
    std::function<void()> toggleMenu = {};
    /// The stages of the last dictation, as a table; nullopt if there is none.
    std::function<std::optional<QString>()> lastTrace = {};
};

/// What lastDictation() has no text for.
inline constexpr const char *nothingDictated = QT_TRANSLATE_NOOP("Talmo", "Nothing has been dictated yet.");

} // namespace talmo
