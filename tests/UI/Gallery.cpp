#include "UI/Gallery.h"

#include "Base/Error.h"
#include "Platform/Linux/Session/TrayIconColour.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "UI/Style/Card.h"
#include "UI/Style/Symbol.h"

#include <QApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>

namespace talmo::test {

namespace {

constexpr int air = 32;
constexpr QSize smallestCard(220, 50);

const QStringList traySymbols{u"mic.circle"_s, u"waveform.circle.fill"_s, u"ellipsis.circle"_s,
                              u"exclamationmark.circle"_s, u"pause.circle"_s};

/// A stand-in for a wallpaper.
void paintGround(QPainter &painter, const QRect &area, ColourScheme scheme)
{
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    const bool dark = scheme == ColourScheme::Dark;
    gradient.setColorAt(0, dark ? QColor(0x2a, 0x33, 0x4a) : QColor(0xc9, 0xd8, 0xee));
    gradient.setColorAt(1, dark ? QColor(0x4a, 0x2f, 0x55) : QColor(0xe6, 0xcf, 0xe4));
    painter.fillRect(area, gradient);
}

void paintCard(QPainter &painter, QWidget &view)
{
    const QRect card(QPoint(air, air), view.size());
    Card::paint(painter, card, view.palette(), true);
    view.render(&painter, card.topLeft(), {}, QWidget::DrawChildren);
}

} // namespace

Gallery::Gallery(const QDir &folder, const Look &look)
    : m_folder(folder),
      m_look(look)
{
    QApplication::setPalette(Appearance::palette(look.scheme));
    QApplication::setLayoutDirection(look.direction);
    QFont font = QApplication::font();
    font.setPointSizeF(look.points);
    QApplication::setFont(font);
}

void Gallery::addCard(QWidget &view, const QString &name)
{
    view.ensurePolished();
    view.resize(view.sizeHint().expandedTo({Appearance::scaled(smallestCard.width()), smallestCard.height()}));
    const QSize size = view.size() + QSize(2 * air, 2 * air);
    QImage image((QSizeF(size) * m_look.ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_look.ratio);
    QPainter painter(&image);
    paintGround(painter, QRect(QPoint(0, 0), size), m_look.scheme);
    paintCard(painter, view);
    painter.end();
    save(image, name);
}

void Gallery::addWindow(QWidget &view, const QString &name, const QSize &size)
{
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.show();
    // As on a screen of 1366×768 where that is not enough.
    constexpr QSize lowScreen(1306, 708);
    view.resize(m_look.points == 10 ? size : (size * Appearance::textScale()).boundedTo(lowScreen));
    settle(); // Lets layout and painting finish.
    QImage image((QSizeF(view.size()) * m_look.ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_look.ratio);
    image.fill(view.palette().color(QPalette::Window));
    view.render(&image);
    save(image, name);
}

void Gallery::addTrayIcons()
{
    const QColor panels[] = {QColor(0xef, 0xf0, 0xf1), QColor(0x80, 0x80, 0x80), QColor(0x2f, 0x34, 0x3a)};
    QImage image((QSizeF(170, 3 * 76) * m_look.ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_look.ratio);
    QPainter painter(&image);
    for (int row = 0; row < 3; ++row) {
        painter.fillRect(0, 76 * row, 170, 76, panels[row]);
        for (int index = 0; index < traySymbols.size(); ++index) {
            const QIcon icon = Symbol::icon(traySymbols.at(index), trayInks({}, std::nullopt, {}, m_look.scheme));
            icon.paint(&painter, QRect(14 + 30 * index, 76 * row + 12, 16, 16));
            icon.paint(&painter, QRect(11 + 30 * index, 76 * row + 42, 22, 22));
        }
    }
    painter.end();
    save(image, u"tray"_s);
}

void Gallery::addIcons()
{
    const auto &names = traySymbols;
    QImage image((QSizeF(170, 76) * m_look.ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_look.ratio);
    image.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&image);
    for (int index = 0; index < names.size(); ++index) {
        const QColor ink = QApplication::palette().color(QPalette::WindowText);
        Symbol::paint(painter, QRectF(14 + 30 * index, 12, 16, 16), names.at(index), ink);
        Symbol::paint(painter, QRectF(11 + 30 * index, 42, 22, 22), names.at(index), ink);
    }
    painter.end();
    save(image, u"icons"_s);
}

void Gallery::save(const QImage &image, const QString &name)
{
    const QString file = m_folder.filePath(name + QLatin1Char('-') + m_look.name() + u".png"_s);
    if (!image.save(file)) {
        throw Error(u"Cannot write "_s + file);
    }
}

} // namespace talmo::test
