#pragma once

#include "UI/Overlay/ScreenSource.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <memory>

namespace talmo {

class SettingsView;

/// The settings window, created when it is first opened and then kept. Main thread.
class SettingsWindow final : public QWidget {
public:
    SettingsWindow(const ViewContext &context, std::shared_ptr<ScreenSource> screens);

    /// Raises the window if it is open; otherwise shows it on the screen under the pointer.
    void open();

protected:
    void changeEvent(QEvent *event) override;

private:
    void place();
    void refreshAvailability();
    static QCoro::Task<void> rereadAfter(QFuture<void> refreshed, QPointer<SettingsWindow> self);

    ViewContext m_context;
    std::shared_ptr<ScreenSource> m_screens;
    SettingsView *m_view;
};

} // namespace talmo
