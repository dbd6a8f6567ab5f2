#include "Platform/Linux/Wayland/Keys/FakeInput.h"

#include <linux/input-event-codes.h>

namespace talmo {

namespace {

constexpr quint32 versionWithKeys = 4;
constexpr quint32 modifiers[] = {KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTSHIFT, KEY_RIGHTSHIFT,
                                 KEY_LEFTALT,  KEY_RIGHTALT,  KEY_LEFTMETA,  KEY_RIGHTMETA};

} // namespace

bool FakeInput::isOffered(const WaylandSession &session)
{
    return session.offeredVersion(org_kde_kwin_fake_input_interface.name) >= versionWithKeys;
}

std::unique_ptr<FakeInput> FakeInput::open(WaylandSession &session)
{
    if (!isOffered(session)) {
        return nullptr;
    }
    return std::unique_ptr<FakeInput>(new FakeInput(session));
}

FakeInput::FakeInput(WaylandSession &session)
    : m_session(session),
      m_input(session.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, versionWithKeys))
{
    org_kde_kwin_fake_input_authenticate(m_input, "Talmo", "paste dictated text");
    m_session.flush();
}

FakeInput::~FakeInput()
{
    wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_input)); // NOLINT: every protocol object is a proxy.
}

void FakeInput::post(const std::vector<quint32> &keys)
{
    // KWin adds the modifiers that the user holds to the shortcut.
    for (const auto modifier : modifiers) {
        org_kde_kwin_fake_input_keyboard_key(m_input, modifier, WL_KEYBOARD_KEY_STATE_RELEASED);
    }
    for (const auto key : keys) {
        org_kde_kwin_fake_input_keyboard_key(m_input, key, WL_KEYBOARD_KEY_STATE_PRESSED);
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        org_kde_kwin_fake_input_keyboard_key(m_input, *key, WL_KEYBOARD_KEY_STATE_RELEASED);
    }
}

} // namespace talmo
