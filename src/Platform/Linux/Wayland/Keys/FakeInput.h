#pragma once

#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

#include <fake-input.h>

namespace talmo {

/// Types by KDE's fake-input, which KWin offers only to programs whose desktop entry asks for it.
class FakeInput final : public ChordKeyboard {
public:
    /// Whether the compositor lets Talmo use it. Any thread.
    static bool isOffered(const WaylandSession &session);
    /// Null if the compositor does not offer it.
    static std::unique_ptr<FakeInput> open(WaylandSession &session);
    ~FakeInput() override;
    FakeInput(const FakeInput &) = delete;
    FakeInput &operator=(const FakeInput &) = delete;

    void post(const std::vector<quint32> &keys) override;

private:
    explicit FakeInput(WaylandSession &session);

    WaylandSession &m_session;
    org_kde_kwin_fake_input *m_input;
};

} // namespace talmo
