#pragma once

#include "Base/Clock.h"
#include "UI/Menu/FrontmostFocus.h"

#include <QCoro/QCoroTask>

#include <memory>

namespace talmo {

/// The X server's keyboard focus. A menu grabs the keyboard without moving the focus, so it is back as soon as the
/// server has processed the end of the grab; if a window manager moved the focus anyway, this waits for it.
class XFrontmostFocus final : public FrontmostFocus {
public:
    explicit XFrontmostFocus(std::shared_ptr<Clock> clock);

    void remember() override;
    QFuture<void> returned() override;

private:
    std::shared_ptr<Clock> m_clock;
    quint32 m_window = 0;
};

} // namespace talmo
