#pragma once

#include "Base/SerialExecutor.h"
#include "Insertion/FocusedField.h"
#include "Platform/Linux/Gnome/GnomeShell.h"

#include <memory>

namespace talmo {

/// Asks the shell first, which knows the purpose that toolkits declare to input methods, then the focused process over
/// the accessibility bus. Without the extension it asks `otherwise`.
class GnomeFocusedField final : public FocusedField {
public:
    GnomeFocusedField(std::shared_ptr<GnomeShell> shell, std::shared_ptr<FocusedField> otherwise);

    QFuture<bool> isPassword(Duration limit) override;

private:
    std::shared_ptr<GnomeShell> m_shell;
    std::shared_ptr<FocusedField> m_otherwise;
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
