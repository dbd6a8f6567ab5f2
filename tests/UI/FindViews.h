#pragma once

#include "UI/Style/SymbolLabel.h"

#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <algorithm>

namespace talmo::test {

/// The visible button with this text; null if there is none.
inline QPushButton *buttonNamed(QWidget &view, const QString &text)
{
    for (auto *button : view.findChildren<QPushButton *>()) {
        if (button->text() == text && button->isVisibleTo(&view)) {
            return button;
        }
    }
    return nullptr;
}

/// For classes without a meta-object, which findChild() does not tell apart.
template <typename View>
View *childOf(const QWidget &parent)
{
    for (auto *child : parent.findChildren<QWidget *>()) {
        if (auto *view = dynamic_cast<View *>(child)) {
            return view;
        }
    }
    return nullptr;
}

/// Whether a visible label contains the text.
inline bool shows(QWidget &view, const QString &text)
{
    const auto labels = view.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel *label) { return label->text().contains(text) && label->isVisibleTo(&view); });
}

/// The names of all visible symbols.
inline QStringList symbols(const QWidget &view)
{
    QStringList names;
    for (const auto *label : view.findChildren<QWidget *>()) {
        if (const auto *symbol = dynamic_cast<const SymbolLabel *>(label); symbol != nullptr && symbol->isVisible()) {
            names.append(symbol->symbol());
        }
    }
    return names;
}

} // namespace talmo::test
