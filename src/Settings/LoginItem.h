#pragma once

namespace talmo {

enum class LoginItemStatus { NotRegistered, Enabled, RequiresApproval, NotFound };

/// Talmo's registration to be started when the user logs in. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// As it really is now, read anew.
    virtual LoginItemStatus status() const = 0;

    /// Throw Error. Both may be called in any status.
    virtual void registerItem() = 0;
    virtual void unregisterItem() = 0;
};

} // namespace talmo
