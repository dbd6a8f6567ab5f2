#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <functional>
#include <memory>

class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace talmo {

class KeyCap;
class TintedLabel;
class WarningRow;

/// What a new user needs, on one page: the key, the microphone, the language, a field to try it in, and what is
/// missing.
class WelcomeView final : public QWidget {
public:
    /// `done`: the user has seen enough.
    WelcomeView(const ViewContext &context, std::function<void()> done);

    void refresh();
    /// The height at which it fits without scrolling.
    int idealHeight(int width) const;

private:
    void buildGreeting(QVBoxLayout &page);
    void buildKey(QVBoxLayout &page);
    void buildTrial(QVBoxLayout &page);
    void buildOffer(QVBoxLayout &page);
    void buildEnd(QVBoxLayout &page);
    void refreshOffer();

    ViewContext m_context;
    std::function<void()> m_done;
    QWidget *m_page = nullptr;
    QWidget *m_end = nullptr;
    KeyCap *m_key = nullptr;
    QPlainTextEdit *m_field = nullptr;
    TintedLabel *m_greeting = nullptr;
    WarningRow *m_missing = nullptr;
    QWidget *m_offerSection = nullptr;
    QPushButton *m_accept = nullptr;
    TintedLabel *m_offer = nullptr;
    QProgressBar *m_progress = nullptr;
    WarningRow *m_offerProblem = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
