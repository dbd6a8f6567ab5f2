#pragma once

#include "Base/SerialExecutor.h"
#include "Insertion/FocusedField.h"

#include <memory>

namespace talmo {

/// Asks over the accessibility bus (AT-SPI), if that is running, which program has the focus and what its focused field
/// is: compositors do not say whose window is in front. The calls have their own thread, since a program that hangs
/// blocks them.
class WaylandFocusedField final : public FocusedField {
public:
    WaylandFocusedField();

    QFuture<bool> isPassword(Duration limit) override;

private:
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
