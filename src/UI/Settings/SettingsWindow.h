#pragma once

#include "UI/Overlay/ScreenSource.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <memory>

namespace talmo {

class SettingsView;
class WelcomeView;

/// The settings window, created when it is first opened and then kept. Main thread.
class SettingsWindow final : public QWidget {
public:
    SettingsWindow(const ViewContext &context, std::shared_ptr<ScreenSource> screens);

    /// Shows the welcome instead of the tabs, until the user is done with it or opens the settings.
    void openWelcome();
    /// Raises the window if it is open; otherwise shows it on the screen under the pointer.
    void open();
    /// The same, on the recogniser's page.
    void openRecogniser();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void present();
    void place();
    void endWelcome();
    void followFont();
    void refreshAvailability();
    static QCoro::Task<void> refreshAfter(QFuture<void> refreshed, QPointer<SettingsWindow> self);

    ViewContext m_context;
    std::shared_ptr<ScreenSource> m_screens;
    SettingsView *m_view;
    qreal m_textScale;
    /// Null except while it is shown.
    WelcomeView *m_welcome = nullptr;
};

} // namespace talmo
