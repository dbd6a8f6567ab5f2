#include "Platform/Linux/X11/Clipboard/SelectionTargets.h"

#include <cstring>
#include <unordered_set>

namespace talmo {

std::vector<xcb_atom_t> atomsOf(const QByteArray &property, int unitBits)
{
    constexpr int atomBits = 32;
    if (unitBits != atomBits) {
        return {};
    }
    std::vector<xcb_atom_t> atoms(static_cast<std::size_t>(property.size()) / sizeof(xcb_atom_t));
    if (!atoms.empty()) {
        std::memcpy(atoms.data(), property.constData(), atoms.size() * sizeof(xcb_atom_t));
    }
    return atoms;
}

SelectionTargets SelectionTargets::parse(const QByteArray &property, int unitBits, std::span<const xcb_atom_t> excluded,
                                         std::size_t limit)
{
    SelectionTargets targets;
    std::unordered_set<xcb_atom_t> seen(excluded.begin(), excluded.end());
    seen.insert(XCB_ATOM_NONE);
    for (const xcb_atom_t atom : atomsOf(property, unitBits)) {
        if (seen.contains(atom)) {
            continue;
        }
        if (targets.atoms.size() == limit) {
            targets.isTruncated = true;
            break;
        }
        seen.insert(atom);
        targets.atoms.push_back(atom);
    }
    return targets;
}

std::vector<xcb_atom_t> serveMultiple(std::vector<xcb_atom_t> pairs, xcb_atom_t multiple,
                                      const std::function<bool(xcb_atom_t target, xcb_atom_t property)> &serve)
{
    for (std::size_t index = 0; index + 1 < pairs.size(); index += 2) {
        const xcb_atom_t target = pairs[index];
        xcb_atom_t &property = pairs[index + 1];
        if (property != XCB_ATOM_NONE && (target == multiple || !serve(target, property))) {
            property = XCB_ATOM_NONE;
        }
    }
    return pairs;
}

} // namespace talmo
