#pragma once

#include <QByteArray>

#include <xcb/xproto.h>

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace talmo {

/// The targets that a selection's owner offers and that are worth requesting.
struct SelectionTargets {
    /// More than any program offers. Every target costs a round trip or two, so longer lists are truncated.
    static constexpr std::size_t maximumCount = 256;

    /// In the owner's order, without duplicates, XCB_ATOM_NONE and excluded targets.
    std::vector<xcb_atom_t> atoms;
    /// The owner offers more than that.
    bool isTruncated = false;

    /// `property`: the raw answer to TARGETS; treated as empty unless its units are 32 bits. `excluded`: targets that
    /// only control the protocol or have side effects in the owner. Linear in the property's size.
    static SelectionTargets parse(const QByteArray &property, int unitBits, std::span<const xcb_atom_t> excluded,
                                  std::size_t limit = maximumCount);
};

/// The complete atoms in a property of 32-bit units; none for other units.
std::vector<xcb_atom_t> atomsOf(const QByteArray &property, int unitBits);

/// Serves the pairs of target and property of a MULTIPLE request. `serve` converts one. A pair that it cannot convert,
/// and a nested MULTIPLE, get XCB_ATOM_NONE as the property; a target without a property is left unchanged. Returns the
/// list to answer with, of the same length as the request.
std::vector<xcb_atom_t> serveMultiple(std::vector<xcb_atom_t> pairs, xcb_atom_t multiple,
                                      const std::function<bool(xcb_atom_t target, xcb_atom_t property)> &serve);

} // namespace talmo
