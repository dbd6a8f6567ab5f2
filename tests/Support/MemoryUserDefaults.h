#pragma once

#include "Settings/UserDefaults.h"

#include <map>
#include <string>
#include <vector>

namespace talmo::test {

/// In-memory user defaults that record every write.
class MemoryUserDefaults final : public UserDefaults {
public:
    using Writes = std::vector<std::pair<QString, DefaultsValue>>;

    Writes writes;

    std::optional<bool> boolean(const QString &key) const override { return find<bool>(key); }
    std::optional<QString> string(const QString &key) const override { return find<QString>(key); }
    std::optional<QStringList> stringArray(const QString &key) const override { return find<QStringList>(key); }
    void set(const QString &key, const DefaultsValue &value) override
    {
        writes.emplace_back(key, value);
        m_stored[key] = value;
    }
    void registerDefault(const QString &key, const DefaultsValue &value) override { m_registered[key] = value; }

    /// Stores a value as an earlier run would have left it.
    void store(const QString &key, const DefaultsValue &value) { m_stored[key] = value; }
    Writes takeWrites() { return std::exchange(writes, {}); }

private:
    using Values = std::map<QString, DefaultsValue>;

    template <typename Value>
    std::optional<Value> find(const QString &key) const
    {
        for (const Values *layer : {&m_stored, &m_registered}) {
            const auto found = layer->find(key);
            if (found != layer->end() && std::holds_alternative<Value>(found->second)) {
                return std::get<Value>(found->second);
            }
        }
        return std::nullopt;
    }

    Values m_stored;
    Values m_registered;
};

} // namespace talmo::test
