#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/SharedInstance.h"
#include "Settings/LoginItem.h"
#include "Settings/UserDefaults.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo {

/// The user's preferences. Every change is announced before it is stored, also one to the value it has already, and
/// written through to the user defaults. They are read once, at construction. Main thread only.
class TalmoSettings final : public SettingsService {
    Q_OBJECT

public:
    /// Reads; writes nothing.
    TalmoSettings(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<LoginItem> loginItem);

    /// The one settings object of the process, built on first use by the registered factory.
    static std::shared_ptr<TalmoSettings> shared();
    static void setSharedFactory(SharedInstance<TalmoSettings>::Factory factory);
    static void releaseShared();

    bool aiCleanupEnabled() const override { return m_aiCleanupEnabled; }
    bool conciseTextEnabled() const override { return m_conciseTextEnabled; }
    TextTone textTone() const override { return m_textTone; }
    /// The preference; what is registered is the system's to know.
    bool launchAtLogin() const { return m_launchAtLogin; }
    QStringList dictionaryWords() const override { return m_dictionaryWords; }
    /// The name of the key to hold, for texts that mention it.
    QString hotkeyDisplayName() const { return m_hotkeyDisplayName; }

    void setAiCleanupEnabled(bool enabled);
    void setConciseTextEnabled(bool enabled);
    void setTextTone(TextTone tone);
    void setLaunchAtLogin(bool enabled);
    void setDictionaryWords(const QStringList &words);
    void setHotkeyDisplayName(const QString &name);

    /// Appends the word, trimmed, unless it is empty or the list holds it already (case counts).
    void addDictionaryWord(const QString &word);

    /// Brings the registration in line with the wish. A failure is logged; the preference is not touched.
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

/// The key of the preference that decides whether text is given to a language model, for a store that has lost it.
QString aiCleanupEnabledKey();

/// The key of the name under which the shortcut is shown, for the platform that registers another default for it.
QString hotkeyDisplayNameKey();

} // namespace talmo
