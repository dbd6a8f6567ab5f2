#pragma once

#include "Support/Printing.h"
#include "UI/Style/Appearance.h"

#include <QDir>
#include <QImage>
#include <QSize>
#include <QString>
#include <QWidget>

namespace talmo::test {

/// How a picture is taken.
struct Look {
    ColourScheme scheme;
    qreal ratio;
    qreal points = 10;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    QString name() const
    {
        const QString size = points == 10 ? QString() : u"-%1pt"_s.arg(points);
        return (scheme == ColourScheme::Dark ? u"dark"_s : u"light"_s) + u"-%1x"_s.arg(ratio) + size +
               (direction == Qt::RightToLeft ? u"-rtl"_s : QString());
    }
};

/// Draws views into files of a folder, all with the same look.
class Gallery {
public:
    static constexpr QSize settingsSize{540, 660};

    Gallery(const QDir &folder, const Look &look);

    /// A view on a card above a wallpaper.
    void addCard(QWidget &view, const QString &name);
    void addWindow(QWidget &view, const QString &name, const QSize &size = settingsSize);
    /// The tray icons as they are on panels of unknown colour, at two sizes: light, medium and dark.
    void addTrayIcons();
    /// All tray symbols side by side, at two tray sizes.
    void addIcons();

private:
    void save(const QImage &image, const QString &name);

    QDir m_folder;
    Look m_look;
};

} // namespace talmo::test
