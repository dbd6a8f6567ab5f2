#include "Settings/TalmoSettings.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Text.h"
#include "Settings/TextTone.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace talmo {

namespace {

const QString conciseTextEnabledKey = QStringLiteral("talmo.conciseTextEnabled");
const QString textToneKey = QStringLiteral("talmo.textTone");
const QString launchAtLoginKey = QStringLiteral("talmo.launchAtLogin");
const QString dictionaryWordsKey = QStringLiteral("talmo.dictionaryWords");

/// Examples, so that the list explains itself.
QStringList firstDictionaryWords()
{
    return {QStringLiteral("Talmo"), QStringLiteral("Terraform"), QStringLiteral("CloudFormation"),
            QStringLiteral("Kubernetes")};
}

SharedInstance<TalmoSettings> &sharedSettings()
{
    static SharedInstance<TalmoSettings> settings;
    return settings;
}

} // namespace

QString aiCleanupEnabledKey()
{
    return QStringLiteral("talmo.aiCleanupEnabled");
}

QString hotkeyDisplayNameKey()
{
    return QStringLiteral("talmo.hotkeyDisplayName");
}

TalmoSettings::TalmoSettings(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<LoginItem> loginItem)
    : m_defaults(std::move(defaults)),
      m_loginItem(std::move(loginItem)),
      m_aiCleanupEnabled(m_defaults->boolean(aiCleanupEnabledKey()).value_or(true)),
      m_conciseTextEnabled(m_defaults->boolean(conciseTextEnabledKey).value_or(false)),
      m_textTone(
          textToneFromRawValue(m_defaults->string(textToneKey).value_or(QString())).value_or(TextTone::Standard)),
      m_launchAtLogin(m_defaults->boolean(launchAtLoginKey).value_or(false)),
      m_dictionaryWords(m_defaults->stringArray(dictionaryWordsKey).value_or(firstDictionaryWords())),
      m_hotkeyDisplayName(m_defaults->string(hotkeyDisplayNameKey()).value_or(QStringLiteral("fn")))
{
}

std::shared_ptr<TalmoSettings> TalmoSettings::shared()
{
    return sharedSettings().get();
}

void TalmoSettings::setSharedFactory(SharedInstance<TalmoSettings>::Factory factory)
{
    sharedSettings().setFactory(std::move(factory));
}

void TalmoSettings::releaseShared()
{
    sharedSettings().release();
}

void TalmoSettings::setAiCleanupEnabled(bool enabled)
{
    publish(m_aiCleanupEnabled, enabled);
    m_defaults->set(aiCleanupEnabledKey(), enabled);
}

void TalmoSettings::setConciseTextEnabled(bool enabled)
{
    publish(m_conciseTextEnabled, enabled);
    m_defaults->set(conciseTextEnabledKey, enabled);
}

void TalmoSettings::setTextTone(TextTone tone)
{
    publish(m_textTone, tone);
    m_defaults->set(textToneKey, rawValue(tone));
}

void TalmoSettings::setLaunchAtLogin(bool enabled)
{
    publish(m_launchAtLogin, enabled);
    m_defaults->set(launchAtLoginKey, enabled);
}

void TalmoSettings::setDictionaryWords(const QStringList &words)
{
    publish(m_dictionaryWords, words);
    m_defaults->set(dictionaryWordsKey, words);
}

void TalmoSettings::setHotkeyDisplayName(const QString &name)
{
    publish(m_hotkeyDisplayName, name);
    m_defaults->set(hotkeyDisplayNameKey(), name);
}

void TalmoSettings::addDictionaryWord(const QString &word)
{
    const QString trimmed = Text::trimWhitespaceAndNewlines(word);
    const auto isSame = [&trimmed](const QString &known) { return Text::equal(known, trimmed); };
    if (trimmed.isEmpty() || std::any_of(m_dictionaryWords.cbegin(), m_dictionaryWords.cend(), isSame)) {
        return;
    }
    setDictionaryWords(m_dictionaryWords + QStringList{trimmed});
}

void TalmoSettings::updateLaunchAtLogin(bool enabled)
{
    try {
        const bool isEnabled = m_loginItem->status() == LoginItemStatus::Enabled;
        if (enabled && !isEnabled) {
            m_loginItem->registerItem();
        } else if (!enabled && isEnabled) {
            m_loginItem->unregisterItem();
        }
    } catch (...) {
        generalLog().error("Failed to update launch-at-login: %@", {localizedDescription(std::current_exception())});
    }
}

} // namespace talmo
