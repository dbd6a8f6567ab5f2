#include "Platform/Linux/X11/Windows/ScreenStruts.h"

namespace talmo {

namespace {

/// The rectangle of the desktop that the strut reserves.
QRect taken(const Strut &strut, QSize desktop)
{
    const int length = strut.end - strut.begin + 1;
    switch (strut.edge) {
    case Strut::Edge::Left:
        return {0, strut.begin, strut.depth, length};
    case Strut::Edge::Right:
        return {desktop.width() - strut.depth, strut.begin, strut.depth, length};
    case Strut::Edge::Top:
        return {strut.begin, 0, length, strut.depth};
    case Strut::Edge::Bottom:
        return {strut.begin, desktop.height() - strut.depth, length, strut.depth};
    }
    return {};
}

QRect cut(QRect room, const Strut &strut, const QRect &overlap)
{
    switch (strut.edge) {
    case Strut::Edge::Left:
        room.setLeft(overlap.right() + 1);
        break;
    case Strut::Edge::Right:
        room.setRight(overlap.left() - 1);
        break;
    case Strut::Edge::Top:
        room.setTop(overlap.bottom() + 1);
        break;
    case Strut::Edge::Bottom:
        room.setBottom(overlap.top() - 1);
        break;
    }
    return room;
}

} // namespace

QList<Strut> strutsFromProperty(const QList<quint32> &numbers)
{
    constexpr qsizetype fields = 12;
    if (numbers.size() != fields) {
        return {};
    }
    QList<Strut> struts;
    constexpr Strut::Edge edges[] = {Strut::Edge::Left, Strut::Edge::Right, Strut::Edge::Top, Strut::Edge::Bottom};
    for (int index = 0; index < 4; ++index) {
        const auto depth = static_cast<int>(numbers.at(index));
        if (depth > 0) {
            struts.append({edges[index], depth, static_cast<int>(numbers.at(4 + 2 * index)),
                           static_cast<int>(numbers.at(5 + 2 * index))});
        }
    }
    return struts;
}

QRect withoutStruts(const QRect &screen, QSize desktop, const QList<Strut> &struts)
{
    QRect room = screen;
    for (const auto &strut : struts) {
        const QRect overlap = taken(strut, desktop).intersected(room);
        if (overlap.isEmpty()) {
            continue;
        }
        const QRect left = cut(room, strut, overlap);
        if (!left.isEmpty()) {
            room = left;
        }
    }
    return room;
}

} // namespace talmo
