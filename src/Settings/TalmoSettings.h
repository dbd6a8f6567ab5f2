#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/SharedInstance.h"
#include "Settings/LoginItem.h"
#include "Settings/UserDefaults.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo {

/// The user's preferences. Every change, even to the same value, is announced before it is stored, and is written
/// through to the user defaults. Values are read once, at construction. Main thread only.
class TalmoSettings final : public SettingsService {
    Q_OBJECT

public:
    /// Reads the defaults; writes nothing.
    TalmoSettings(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<LoginItem> loginItem);

    /// The process-wide settings, created on first use by the registered factory.
    static std::shared_ptr<TalmoSettings> shared();
    static void setSharedFactory(SharedInstance<TalmoSettings>::Factory factory);
    static void releaseShared();

    bool aiCleanupEnabled() const override { return m_aiCleanupEnabled; }
    bool conciseTextEnabled() const override { return m_conciseTextEnabled; }
    TextTone textTone() const override { return m_textTone; }
    /// The preference; the actual registration is the system's.
    bool launchAtLogin() const { return m_launchAtLogin; }
    QStringList dictionaryWords() const override { return m_dictionaryWords; }
    /// The display name of the key to hold.
    QString hotkeyDisplayName() const { return m_hotkeyDisplayName; }

    void setAiCleanupEnabled(bool enabled);
    void setConciseTextEnabled(bool enabled);
    void setTextTone(TextTone tone);
    void setLaunchAtLogin(bool enabled);
    void setDictionaryWords(const QStringList &words);
    void setHotkeyDisplayName(const QString &name);

    /// Appends the trimmed word unless it is empty or already in the list (case-sensitive).
    void addDictionaryWord(const QString &word);

    /// Registers or unregisters the login item. A failure is logged; the preference is not changed.
    void updateLaunchAtLogin(bool enabled);

private:
    std::shared_ptr<UserDefaults> m_defaults;
    std::shared_ptr<LoginItem> m_loginItem;
    bool m_aiCleanupEnabled;
    bool m_conciseTextEnabled;
    TextTone m_textTone;
    bool m_launchAtLogin;
    QStringList m_dictionaryWords;
    QString m_hotkeyDisplayName;
};

/// The key of the preference that decides whether text is sent to a language model, for a store that has lost it.
QString aiCleanupEnabledKey();

/// The key of the shortcut's display name, for a platform that registers a different default.
QString hotkeyDisplayNameKey();

} // namespace talmo
