#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStringList>
#include <QTabBar>
#include <QWidget>

#include <functional>

namespace talmo::test {

/// The view painted on a transparent background.
inline QImage drawn(QWidget &view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// The expected image, painted by the test.
inline QImage drawn(const QSize &size, const std::function<void(QPainter &)> &paint)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

inline QString margins(const QMargins &margins)
{
    return QStringLiteral("%1,%2,%3,%4")
        .arg(margins.left())
        .arg(margins.top())
        .arg(margins.right())
        .arg(margins.bottom());
}

inline void outlineOf(const QWidget &view, QStringList &lines);

inline void outlineOf(const QLayout &layout, QStringList &lines)
{
    lines.append(QStringLiteral("%1 %2 spacing %3")
                     .arg(QString::fromLatin1(layout.metaObject()->className() + 1))
                     .arg(margins(layout.contentsMargins()))
                     .arg(layout.spacing()));
    for (int index = 0; index < layout.count(); ++index) {
        auto *item = layout.itemAt(index);
        if (item->layout() != nullptr) {
            outlineOf(*item->layout(), lines);
        } else if (item->widget() != nullptr) {
            outlineOf(*item->widget(), lines);
        } else {
            lines.append(QStringLiteral("gap %1").arg(item->sizeHint().height()));
        }
    }
}

/// Fonts, paddings and sizes of a view and of everything in its layout, one per line.
inline void outlineOf(const QWidget &view, QStringList &lines)
{
    QStringList words;
    const auto add = [&](const QString &kind, const QString &text) {
        words << QStringLiteral("%1 %2/%3 “%4”")
                     .arg(kind)
                     .arg(view.font().pixelSize())
                     .arg(static_cast<int>(view.font().weight()))
                     .arg(text.left(18));
    };
    if (const auto *label = qobject_cast<const QLabel *>(&view)) {
        add(QStringLiteral("label"), label->text());
        words << margins(label->contentsMargins());
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&view)) {
        add(QStringLiteral("button"), button->text());
    } else if (const auto *picker = qobject_cast<const QComboBox *>(&view)) {
        add(QStringLiteral("picker"), picker->accessibleName());
    } else if (const auto *field = qobject_cast<const QLineEdit *>(&view)) {
        add(QStringLiteral("field"), field->placeholderText());
    } else if (const auto *list = qobject_cast<const QListWidget *>(&view)) {
        add(QStringLiteral("list"), list->accessibleName());
        words << QStringLiteral("spacing %1").arg(list->spacing());
    } else if (const auto *tabs = qobject_cast<const QTabBar *>(&view)) {
        add(QStringLiteral("tabs"), tabs->accessibleName());
    }
    if (view.minimumSize() == view.maximumSize()) {
        words << QStringLiteral("%1x%2").arg(view.width()).arg(view.height());
    } else if (view.minimumHeight() > 0) {
        words << (view.minimumHeight() == view.maximumHeight() ? QStringLiteral("height %1")
                                                               : QStringLiteral("from height %1"))
                     .arg(view.minimumHeight());
    }
    if (!words.isEmpty()) {
        lines.append(words.join(QLatin1Char(' ')));
    }
    if (view.layout() != nullptr) {
        outlineOf(*view.layout(), lines);
    }
}

inline QStringList outlineOf(const QWidget &view)
{
    QStringList lines;
    outlineOf(view, lines);
    return lines;
}

} // namespace talmo::test
