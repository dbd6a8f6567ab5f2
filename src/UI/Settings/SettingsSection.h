#pragma once

#include <QWidget>

class QCheckBox;
class QHBoxLayout;
class QVBoxLayout;

namespace talmo {

/// A group of settings on its own surface, under an optional heading.
class SettingsSection final : public QWidget {
public:
    explicit SettingsSection(const QString &heading = {});

    /// A toggle with its caption below it.
    QCheckBox *addToggle(const QString &title, const QString &caption);
    /// A row with a name on the left and a control on the right.
    QHBoxLayout *addRow(const QString &name, QWidget *control);
    void addCaption(const QString &text);
    /// A caption after a symbol; disabled, it is dimmed.
    QWidget *addExample(const QString &symbol, const QString &text);
    void addWidget(QWidget *widget, int indent = 0);
    /// A hairline between rows.
    void addSeparator();

    /// The indentation of captions under a toggle, in logical pixels.
    static int toggleIndent();

private:
    QVBoxLayout *m_rows;
};

} // namespace talmo
