#include "UI/Accessibility/AccessibleViews.h"

#include "UI/Menu/MenuBarView.h"
#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Settings/SettingsWindow.h"
#include "UI/Style/LevelBar.h"

#include <QAccessibleWidget>
#include <QStackedWidget>

namespace talmo {

namespace {

/// Its value is read when asked for and never announced: it changes many times a second.
class AccessibleLevelBar final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleLevelBar(LevelBar *bar)
        : QAccessibleWidget(bar, QAccessible::ProgressBar),
          m_bar(bar)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return qRound(m_bar->level() * percent); }
    void setCurrentValue(const QVariant & /*value*/) override {}
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return percent; }
    QVariant minimumStepSize() const override { return 1; }

private:
    static constexpr int percent = 100;

    LevelBar *m_bar;
};

/// The words of the live transcript can be read, but their arrival is not announced.
class AccessibleOverlay final : public QAccessibleWidget {
public:
    explicit AccessibleOverlay(RecordingOverlay *overlay)
        : QAccessibleWidget(overlay, QAccessible::StaticText),
          m_overlay(overlay)
    {
    }

    QString text(QAccessible::Text text) const override
    {
        const auto &contents = m_overlay->contents();
        return text != QAccessible::Description ? QAccessibleWidget::text(text)
               : contents.detail.isEmpty()      ? contents.hint
                                                : contents.detail;
    }

private:
    RecordingOverlay *m_overlay;
};

QAccessibleInterface *describe(const QString & /*className*/, QObject *object)
{
    if (auto *bar = dynamic_cast<LevelBar *>(object)) {
        return new AccessibleLevelBar(bar);
    }
    if (auto *overlay = dynamic_cast<RecordingOverlay *>(object)) {
        return new AccessibleOverlay(overlay);
    }
    if (auto *window = dynamic_cast<SettingsWindow *>(object)) {
        return new QAccessibleWidget(window, QAccessible::Dialog);
    }
    if (auto *menu = dynamic_cast<MenuBarView *>(object)) {
        return new QAccessibleWidget(menu, QAccessible::PopupMenu);
    }
    if (auto *pages = qobject_cast<QStackedWidget *>(object)) {
        // Qt's own role is spoken, as “layered pane”, whenever the focus moves from a tab into its page.
        return new QAccessibleWidget(pages, QAccessible::Pane);
    }
    return nullptr;
}

} // namespace

void describeViewsToScreenReaders()
{
    QAccessible::installFactory(&describe); // Qt keeps each factory once.
}

} // namespace talmo
