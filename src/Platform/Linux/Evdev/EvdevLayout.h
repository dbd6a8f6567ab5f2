#pragma once

#include <QtGlobal>

#include <memory>
#include <set>
#include <utility>

struct xkb_keymap;

namespace talmo {

/// The symbols of the kernel's keys on a US keyboard. Devices have no layout, and the keys that can be held are in the
/// same place in every layout.
class EvdevLayout {
public:
    EvdevLayout();
    ~EvdevLayout();
    EvdevLayout(const EvdevLayout &) = delete;
    EvdevLayout &operator=(const EvdevLayout &) = delete;

    /// Empty if no key has the symbol.
    std::set<int> codesOf(quint32 keySymbol) const;
    /// The symbols of a key without and with Shift; zero for none.
    std::pair<quint32, quint32> symbolsOf(int code) const;

private:
    struct Unref {
        void operator()(xkb_keymap *keymap) const;
    };

    quint32 symbolOf(quint32 xkbCode, quint32 level) const;

    std::unique_ptr<xkb_keymap, Unref> m_keymap;
};

} // namespace talmo
