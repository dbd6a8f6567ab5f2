#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace talmo {

/// The area that a bar or dock reserves at an edge of the whole desktop, in device pixels: `depth` from the edge, from
/// `begin` to `end` along it, both inclusive.
struct Strut {
    enum class Edge { Left, Right, Top, Bottom };
    Edge edge;
    int depth;
    int begin;
    int end;
};

/// The struts in the twelve numbers of a window's property; none if there are not twelve.
QList<Strut> strutsFromProperty(const QList<quint32> &numbers);

/// The part of the screen that the struts leave free, on a desktop of that size. Struts count only on the screens that
/// they lie on, since each is measured from the edge of the desktop, not of its screen. A strut that would leave
/// nothing is ignored.
QRect withoutStruts(const QRect &screen, QSize desktop, const QList<Strut> &struts);

} // namespace talmo
