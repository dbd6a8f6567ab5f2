#pragma once

#include "Insertion/FocusedField.h"
#include "Platform/Linux/X11/XSession.h"

#include <memory>

namespace talmo {

/// Asks the application in front what its focused field is, over the accessibility bus (AT-SPI), if the desktop has
/// one running. Connects for each question and lets go again. The questions have a thread of their own, since a program
/// that hangs keeps them waiting.
class AtSpiFocusedField final : public FocusedField {
public:
    explicit AtSpiFocusedField(std::shared_ptr<XSession> session);

    QFuture<bool> isPassword(Duration limit) override;

private:
    std::shared_ptr<XSession> m_session;
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
