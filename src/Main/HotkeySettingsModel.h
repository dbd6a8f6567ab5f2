#pragma once

#include "Input/Hotkey/HotkeyControl.h"
#include "Settings/HotkeySettings.h"
#include "Settings/UserDefaults.h"

#include <functional>
#include <memory>

namespace talmo {

/// Keeps the names of the keys under a key of this platform's, and has the desktop use them.
class HotkeySettingsModel final : public HotkeySettings {
public:
    /// `rename`: called with the new name of the first key.
    HotkeySettingsModel(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<HotkeyControl> control,
                        std::function<void(const QString &)> rename);
    ~HotkeySettingsModel() override;

    QList<Key> keys() const override;
    QString problem() const override;
    std::optional<Key> suggestion() const override;
    void beginCapture(Capture capture) override;
    void endCapture() override;
    std::optional<Capture> capture() const override { return m_capture; }
    void use(const QString &id) override;
    void remove(const QString &id) override;

private:
    void take(const HotkeyControl::Press &press);
    void store(const QStringList &names);
    QStringList usedNames() const;

    std::shared_ptr<UserDefaults> m_defaults;
    std::shared_ptr<HotkeyControl> m_control;
    std::function<void(const QString &)> m_rename;
    std::optional<Capture> m_capture;
    /// Why the last key pressed cannot be used.
    QString m_refusal;
};

} // namespace talmo
