#pragma once

#include "Platform/Linux/Wayland/Portal/LentKeyboard.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboardPaster.h"
#include "Settings/PastePermission.h"
#include "Settings/UserDefaults.h"

#include <QPointer>

#include <memory>

namespace talmo {

/// The user's consent to paste with a keyboard that the desktop lends, in the settings file.
class LentKeyboardPermission final : public PastePermission {
    Q_OBJECT
public:
    LentKeyboardPermission(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<LentKeyboard> keyboard,
                           std::shared_ptr<LentKeyboardPaster> paster);

    /// "linux.pasteWithLentKeyboard".
    static QString consentKey();
    /// "linux.lentKeyboardToken": what the portal gave Talmo for the user's consent.
    static QString tokenKey();

    bool isNeeded() const override { return !m_paster->isFrontKnown(); }
    bool isAllowed() const override;
    QString problem() const override;
    void setAllowed(bool isAllowed) override;

private:
    void store(bool isAllowed);
    void take(bool wasLent);

    std::shared_ptr<UserDefaults> m_defaults;
    std::shared_ptr<LentKeyboard> m_keyboard;
    std::shared_ptr<LentKeyboardPaster> m_paster;
    bool m_isAsking = false;
    bool m_isRefused = false;
};

} // namespace talmo
