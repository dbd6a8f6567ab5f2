#pragma once

#include <QWidget>

class QCheckBox;
class QHBoxLayout;
class QVBoxLayout;

namespace talmo {

/// A group of settings on a surface of its own, under a heading where it has one.
class SettingsSection final : public QWidget {
public:
    explicit SettingsSection(const QString &heading = {});

    /// A toggle with its caption below it.
    QCheckBox *addToggle(const QString &title, const QString &caption);
    /// A row with a name at the left and what belongs to it at the right.
    QHBoxLayout *addRow(const QString &name, QWidget *control);
    void addCaption(const QString &text);
    /// A caption behind a symbol.
    void addExample(const QString &symbol, const QString &text);
    void addWidget(QWidget *widget, int indent = 0);
    /// A hairline between rows.
    void addSeparator();

    /// How far captions stand in under a toggle.
    static int toggleIndent();

private:
    QVBoxLayout *m_rows;
};

} // namespace talmo
