#pragma once

#include "Insertion/Pasteboard.h"

#include <QTimer>

#include <chrono>
#include <functional>

namespace talmo {

/// Limits how long Talmo keeps a secret it found on the clipboard: a password manager removes its passwords after a
/// while, but cannot while Talmo owns the clipboard. A secret expires with the program that copied it, where the
/// desktop tells that, or a minute after Talmo has restored it. The session's thread only.
class SecretLifetime {
public:
    static constexpr std::chrono::minutes longestTime{1};

    /// `onEnd` is called when a secret expires.
    explicit SecretLifetime(std::function<void()> onEnd, std::chrono::milliseconds time = longestTime);

    /// Call when another program's content has been read. Talmo's own texts carry the same hints, but are no secret.
    void noteContent(const QList<PasteboardRepresentation> &content);
    /// Call when something else replaces that content.
    void forget();

    bool isSecret() const { return m_isSecret; }
    /// It must not be on the clipboard any longer.
    bool isOver() const { return m_isOver; }
    /// Call when the secret is restored to the clipboard; the minute starts with the first call.
    void putBack();
    /// Ends a secret early; does nothing if there is none.
    void end();

private:
    std::function<void()> m_onEnd;
    bool m_isSecret = false;
    bool m_isOver = false;
    QTimer m_timer;
};

} // namespace talmo
