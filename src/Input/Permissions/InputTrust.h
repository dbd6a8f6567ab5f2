#pragma once

namespace talmo {

/// Whether this session lets Talmo see the key everywhere and type for the user. Main thread.
class InputTrust {
public:
    virtual ~InputTrust() = default;

    /// Never prompts, never waits.
    virtual bool isTrusted() const = 0;

    /// Has the system ask the user where that exists; the answer as it is now.
    virtual bool requestTrust() = 0;
};

} // namespace talmo
