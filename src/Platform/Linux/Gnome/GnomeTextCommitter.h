#pragma once

#include "Insertion/TextCommitter.h"
#include "Platform/Linux/Gnome/GnomeShell.h"

#include <memory>

namespace talmo {

/// By the input method of GNOME Shell, through the extension. The shell does not say whether the field has taken the
/// text, so this is used only if the user has switched it on.
class GnomeTextCommitter final : public TextCommitter {
public:
    explicit GnomeTextCommitter(std::shared_ptr<GnomeShell> shell);

    /// "linux.commitText": false unless it is true.
    static QString switchKey();

    QFuture<bool> commit(const QString &text) override;

private:
    std::shared_ptr<GnomeShell> m_shell;
};

} // namespace talmo
