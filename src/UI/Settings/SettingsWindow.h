#pragma once

#include "UI/Overlay/ScreenSource.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <memory>

namespace talmo {

class SettingsView;

/// The window around the settings, made when it is first asked for and kept from then on. Main thread.
class SettingsWindow final : public QWidget {
public:
    SettingsWindow(const ViewContext &context, std::shared_ptr<ScreenSource> screens);

    /// Shows it, on the screen under the pointer when it was closed, or brings it out from under others.
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
