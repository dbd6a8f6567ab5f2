#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace talmo {

/// What a bar or dock takes up of an edge of the whole desktop, in device pixels: `depth` from the edge, between
/// `begin` and `end` along it, both included.
struct Strut {
    enum class Edge { Left, Right, Top, Bottom };
    Edge edge;
    int depth;
    int begin;
    int end;
};

/// The struts that the twelve numbers of a window's property say; none when they are not twelve.
QList<Strut> strutsFromProperty(const QList<quint32> &numbers);

/// What is left of a screen of a desktop of that size. Struts count for the screens that they lie on, since each is
/// measured from the edge of the desktop, not of its screen. One that would leave nothing is not believed.
QRect withoutStruts(const QRect &screen, QSize desktop, const QList<Strut> &struts);

} // namespace talmo
