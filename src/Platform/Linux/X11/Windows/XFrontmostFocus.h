#pragma once

#include "Base/Clock.h"
#include "UI/Menu/FrontmostFocus.h"

#include <QCoro/QCoroTask>

#include <memory>

namespace talmo {

/// The keyboard as the X server assigns it. A menu grabs it without moving it, so it is back as soon as the server has
/// seen the end of the grab; a window manager that moved it all the same is waited for.
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
