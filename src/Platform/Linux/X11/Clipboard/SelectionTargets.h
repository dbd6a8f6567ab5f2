#pragma once

#include <QByteArray>

#include <xcb/xproto.h>

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace talmo {

/// The targets that a selection's owner offers, as far as they are worth asking for.
struct SelectionTargets {
    /// More than any program offers. Every target costs a round trip or two, so a longer list is cut here.
    static constexpr std::size_t maximumCount = 256;

    /// In the owner's order, each once, without XCB_ATOM_NONE and what was excluded.
    std::vector<xcb_atom_t> atoms;
    /// The owner offers still more.
    bool isTruncated = false;

    /// `property`: the raw answer to TARGETS; not a list of 32-bit units is an empty list. `excluded`: targets that
    /// only steer the protocol or make the owner do something. Linear in the property's size.
    static SelectionTargets parse(const QByteArray &property, int unitBits, std::span<const xcb_atom_t> excluded,
                                  std::size_t limit = maximumCount);
};

/// The whole atoms in a property of 32-bit units; none for other units.
std::vector<xcb_atom_t> atomsOf(const QByteArray &property, int unitBits);

/// Serves the pairs of target and property of a MULTIPLE request. `serve` converts one. A pair that it does not serve,
/// and a nested MULTIPLE, get XCB_ATOM_NONE for a property; a target without a property is left as it is. Returns the
/// list to answer with, as long as the request.
std::vector<xcb_atom_t> serveMultiple(std::vector<xcb_atom_t> pairs, xcb_atom_t multiple,
                                      const std::function<bool(xcb_atom_t target, xcb_atom_t property)> &serve);

} // namespace talmo
