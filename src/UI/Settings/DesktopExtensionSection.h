#pragma once

#include "Settings/DesktopExtension.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>

class QPushButton;

namespace talmo {

class TintedLabel;
class WarningRow;

/// Shows whether the desktop's extension is installed, with a button that enables it. Hidden while there is nothing to
/// say.
class DesktopExtensionSection final : public QWidget {
public:
    enum class Shown { Always, WhileMissing };

    DesktopExtensionSection(std::shared_ptr<DesktopExtension> extension, Shown shown);

private:
    void refresh();

    std::shared_ptr<DesktopExtension> m_extension;
    Shown m_shown;
    TintedLabel *m_sentence = nullptr;
    WarningRow *m_warning = nullptr;
    QPushButton *m_enable = nullptr;
    /// Without a view: the section hides itself, and must see what would show it.
    ChangeWatcher m_watcher;
};

} // namespace talmo
