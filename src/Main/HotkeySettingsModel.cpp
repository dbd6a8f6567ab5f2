#include "Main/HotkeySettingsModel.h"

#include "Base/Log.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "UI/Style/Wording.h"

#include <utility>

namespace talmo {

namespace {

const char *const unknownName = QT_TRANSLATE_NOOP(
    "Talmo", "The settings file names a key “%1”, which does not exist. Press the key you want instead.");
const char *const typingName =
    QT_TRANSLATE_NOOP("Talmo", "“%1” types text, so it cannot be held. Choose a key that types nothing, such as F9.");
const char *const missingKey =
    QT_TRANSLATE_NOOP("Talmo", "Your keyboard layout has no key “%1”. Press the key you want instead.");
const char *const takenKey = QT_TRANSLATE_NOOP(
    "Talmo", "Another program uses “%1” as well, and reacts to it too. Choose another key, or change that program.");
const char *const namelessKey =
    QT_TRANSLATE_NOOP("Talmo", "The keyboard layout has no name for this key. Press another one.");

/// One sentence for each, in one paragraph.
void append(QStringList &sentences, const char *sentence, const QStringList &names)
{
    for (const auto &name : names) {
        sentences.append(Wording::text(sentence).arg(name));
    }
}

} // namespace

HotkeySettingsModel::HotkeySettingsModel(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<HotkeyControl> control,
                                         std::function<void(const QString &)> rename)
    : m_defaults(std::move(defaults)),
      m_control(std::move(control)),
      m_rename(std::move(rename))
{
}

HotkeySettingsModel::~HotkeySettingsModel()
{
    m_control->endCapture();
}

QList<HotkeySettings::Key> HotkeySettingsModel::keys() const
{
    QList<Key> keys;
    for (const auto &key : m_control->keys().used) {
        keys.append({key.name, key.title});
    }
    return keys;
}

QString HotkeySettingsModel::problem() const
{
    if (!m_refusal.isEmpty()) {
        return m_refusal;
    }
    const auto keys = m_control->keys();
    QStringList sentences;
    append(sentences, unknownName, keys.unknown);
    append(sentences, typingName, keys.typing);
    append(sentences, missingKey, keys.missing);
    append(sentences, takenKey, keys.taken);
    return sentences.join(QLatin1Char(' '));
}

/// Offered only until the user has chosen a key: whether a laptop really has the keys it claims cannot be known.
std::optional<HotkeySettings::Key> HotkeySettingsModel::suggestion() const
{
    const bool isChosen = !m_defaults->stringArray(LinuxSettings::standInKeysKey()).value_or(QStringList()).isEmpty();
    const auto used = m_control->keys().used;
    if (isChosen && m_control->isOnKeyboard(used.first().name)) {
        return std::nullopt;
    }
    const auto suggested = m_control->suggestion();
    return suggested ? std::optional(Key{suggested->name, suggested->title}) : std::nullopt;
}

void HotkeySettingsModel::beginCapture(Capture capture)
{
    Q_EMIT objectWillChange();
    m_capture = capture;
    m_refusal.clear();
    m_control->beginCapture([this](const HotkeyControl::Press &press) { take(press); });
}

void HotkeySettingsModel::endCapture()
{
    if (m_capture) {
        m_control->endCapture();
        publish(m_capture, std::nullopt);
    }
}

void HotkeySettingsModel::take(const HotkeyControl::Press &press)
{
    using Kind = HotkeyControl::Press::Kind;
    Q_EMIT objectWillChange();
    const auto capture = std::exchange(m_capture, std::nullopt);
    if (press.kind == Kind::Typing) {
        m_refusal = Wording::textWithKey(typingName, press.key.title);
    } else if (press.kind == Kind::Nameless) {
        m_refusal = Wording::text(namelessKey);
    } else if (press.kind == Kind::Usable) {
        QStringList names = capture == Capture::Add ? usedNames() : QStringList();
        names.removeAll(press.key.name);
        store(names + QStringList{press.key.name});
    }
}

QStringList HotkeySettingsModel::usedNames() const
{
    QStringList names;
    for (const auto &key : m_control->keys().used) {
        names.append(key.name);
    }
    return names;
}

void HotkeySettingsModel::use(const QString &id)
{
    Q_EMIT objectWillChange();
    store({id});
}

void HotkeySettingsModel::remove(const QString &id)
{
    QStringList names = usedNames();
    if (names.size() > 1 && names.removeAll(id) > 0) {
        Q_EMIT objectWillChange();
        store(names);
    }
}

void HotkeySettingsModel::store(const QStringList &names)
{
    generalLog().info("keys to hold: %@", {names.join(QStringLiteral(", "))});
    m_refusal.clear();
    m_defaults->set(LinuxSettings::standInKeysKey(), names);
    m_control->setKeys(names);
    m_rename(m_control->keys().used.first().title);
}

} // namespace talmo
