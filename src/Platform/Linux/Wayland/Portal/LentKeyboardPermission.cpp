#include "Platform/Linux/Wayland/Portal/LentKeyboardPermission.h"

#include "UI/Style/Wording.h"

#include <utility>

namespace talmo {

LentKeyboardPermission::LentKeyboardPermission(std::shared_ptr<UserDefaults> defaults,
                                               std::shared_ptr<LentKeyboard> keyboard,
                                               std::shared_ptr<LentKeyboardPaster> paster)
    : m_defaults(std::move(defaults)),
      m_keyboard(std::move(keyboard)),
      m_paster(std::move(paster))
{
    m_paster->setAllowed(m_defaults->boolean(consentKey()).value_or(false));
}

QString LentKeyboardPermission::consentKey()
{
    return QStringLiteral("linux.pasteWithLentKeyboard");
}

QString LentKeyboardPermission::tokenKey()
{
    return QStringLiteral("linux.lentKeyboardToken");
}

bool LentKeyboardPermission::isAllowed() const
{
    return m_isAsking || m_defaults->boolean(consentKey()).value_or(false);
}

QString LentKeyboardPermission::problem() const
{
    const bool isWithdrawn = isAllowed() && !m_isAsking && !m_keyboard->isGranted();
    return m_isRefused || isWithdrawn
               ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "The desktop did not allow it for good. Switch this off and "
                                                          "on again, and allow it in the dialog for later sessions "
                                                          "too."))
               : QString();
}

void LentKeyboardPermission::setAllowed(bool isAllowed)
{
    if (isAllowed && m_isAsking) {
        return;
    }
    Q_EMIT objectWillChange();
    if (!isAllowed) {
        m_isAsking = false;
        m_isRefused = false;
        store(false);
        return;
    }
    m_isAsking = true;
    m_isRefused = false;
    m_keyboard->request([self = QPointer(this)](bool wasLent) {
        if (self) {
            self->take(wasLent);
        }
    });
}

/// The switch may have been switched off again in the meantime.
void LentKeyboardPermission::take(bool wasLent)
{
    if (!m_isAsking) {
        return;
    }
    Q_EMIT objectWillChange();
    m_isAsking = false;
    m_isRefused = !wasLent;
    store(wasLent);
}

void LentKeyboardPermission::store(bool isAllowed)
{
    m_defaults->set(consentKey(), isAllowed);
    if (!isAllowed) {
        m_defaults->set(tokenKey(), QString());
    }
    m_paster->setAllowed(isAllowed);
}

} // namespace talmo
