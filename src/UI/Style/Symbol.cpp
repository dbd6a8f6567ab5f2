#include "UI/Style/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace talmo::Symbol {

namespace {

/// Some symbols have a second drawing on a grid of this many pixels, for trays of that height.
constexpr int trayGrid = 22;

QString file(const QString &name)
{
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

/// The drawing whose grid fits the size best.
QString fittingFile(const QString &name, int deviceSize)
{
    const QString large = file(QStringLiteral("%1@%2").arg(name).arg(trayGrid));
    return deviceSize % trayGrid == 0 && QFile::exists(large) ? large : file(name);
}

/// A round symbol on a disc that is seen around its strokes.
QPixmap onDisc(const QString &name, int size, const QColor &ink, const QColor &disc)
{
    QPixmap result(size, size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(disc);
    painter.drawEllipse(QRectF(0, 0, size, size));
    constexpr int sizePerRim = 12; // Of a filled symbol, little more than the rim may be seen.
    const int rim = qRound(qreal(size) / sizePerRim);
    painter.drawPixmap(rim, rim, pixmap(name, size - 2 * rim, ink));
    return result;
}

} // namespace

bool exists(const QString &name)
{
    return QFile::exists(file(name));
}

QPixmap pixmap(const QString &name, int size, const QColor &colour, qreal ratio)
{
    const int deviceSize = qRound(size * ratio);
    QPixmap result(deviceSize, deviceSize);
    result.fill(Qt::transparent);
    if (exists(name)) {
        QPainter painter(&result);
        QSvgRenderer(fittingFile(name, deviceSize)).render(&painter, QRectF(0, 0, deviceSize, deviceSize));
        // The drawings define only the shape; the colour comes from the caller.
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(result.rect(), colour);
    }
    result.setDevicePixelRatio(ratio);
    return result;
}

void paint(QPainter &painter, const QRectF &square, const QString &name, const QColor &colour)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    painter.drawPixmap(square.topLeft(), pixmap(name, qRound(square.width()), colour, ratio));
}

QIcon icon(const QString &name, const QColor &colour)
{
    return icon(name, Inks{colour, std::nullopt});
}

QIcon icon(const QString &name, const Inks &inks)
{
    QIcon result;
    for (const int size : {16, 20, 22, 24, 32, 44, 48, 64}) {
        result.addPixmap(inks.disc ? onDisc(name, size, inks.ink, *inks.disc) : pixmap(name, size, inks.ink));
    }
    return result;
}

} // namespace talmo::Symbol
