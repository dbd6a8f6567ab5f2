#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Input/Permissions/InputTrust.h"

#include <memory>
#include <utility>
#include <vector>

namespace talmo::test {

/// Delivers the test's events to the global or local monitors.
class FakeEventMonitor final : public EventMonitor {
public:
    bool offersGlobal = true;
    bool offersLocal = true;
    bool isApplicationActive = false;
    std::vector<quint64> masks;
    /// The events returned by the local monitors.
    std::vector<std::optional<FlagsChangedEvent>> delivered;

    std::shared_ptr<EventMonitorToken> addGlobalMonitor(quint64 eventMask,
                                                        std::function<void(const FlagsChangedEvent &)> handler) override
    {
        masks.push_back(eventMask);
        if (!offersGlobal) {
            return nullptr;
        }
        auto token = std::make_shared<Token>();
        token->handler = [handler = std::move(handler)](const FlagsChangedEvent &event) {
            handler(event);
            return std::optional(event);
        };
        token->isGlobal = true;
        m_tokens.push_back(token);
        return token;
    }

    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override
    {
        masks.push_back(eventMask);
        if (!offersLocal) {
            return nullptr;
        }
        auto token = std::make_shared<Token>();
        token->handler = std::move(handler);
        m_tokens.push_back(token);
        return token;
    }

    void send(quint64 flags)
    {
        const FlagsChangedEvent event{flags};
        for (const auto &weak : std::vector(m_tokens)) {
            const auto token = weak.lock();
            if (token && token->isGlobal != isApplicationActive) {
                const auto result = token->handler(event);
                if (!token->isGlobal) {
                    delivered.push_back(result);
                }
            }
        }
    }
    void press() { send(GlobalHotkeyManager::functionFlag); }
    void release() { send(0); }

private:
    struct Token final : EventMonitorToken {
        std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler;
        bool isGlobal = false;
    };
    std::vector<std::weak_ptr<Token>> m_tokens;
};

class FakeInputTrust final : public InputTrust {
public:
    bool trusted = true;
    int requests = 0;
    bool isTrusted() const override { return trusted; }
    bool requestTrust() override
    {
        ++requests;
        return trusted;
    }
};

} // namespace talmo::test
