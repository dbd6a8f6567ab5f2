#pragma once

namespace talmo {

enum class LoginItemStatus { NotRegistered, Enabled, RequiresApproval, NotFound };

/// Talmo's registration as a login item. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// Read from the system on every call.
    virtual LoginItemStatus status() const = 0;

    /// Throw Error. Both may be called in any status.
    virtual void registerItem() = 0;
    virtual void unregisterItem() = 0;
};

} // namespace talmo
