#pragma once

namespace talmo {

/// Whether Talmo may watch the key session-wide and type for the user. Main thread.
class InputTrust {
public:
    virtual ~InputTrust() = default;

    /// Never prompts, never blocks.
    virtual bool isTrusted() const = 0;

    /// Prompts the user on systems that can; returns the current state without waiting.
    virtual bool requestTrust() = 0;
};

} // namespace talmo
