#pragma once

#include "Insertion/FocusedField.h"
#include "Platform/Linux/X11/XSession.h"

#include <memory>

namespace talmo {

/// Asks the frontmost application about its focused field over the accessibility bus (AT-SPI), if that is running.
/// Connects only for the duration of each call. The calls have their own thread, since a program that hangs blocks
/// them.
class AtSpiFocusedField final : public FocusedField {
public:
    explicit AtSpiFocusedField(std::shared_ptr<XSession> session);

    QFuture<bool> isPassword(Duration limit) override;

private:
    std::shared_ptr<XSession> m_session;
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
