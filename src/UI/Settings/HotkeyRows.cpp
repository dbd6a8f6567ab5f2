#include "UI/Settings/HotkeyRows.h"

#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/KeyCap.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

constexpr int spacing = 6;

const char *const restingHelp =
    QT_TRANSLATE_NOOP("Talmo", "A key such as F9 no longer reaches other programs, except together with Ctrl, Alt, "
                               "Shift or Super. A modifier such as Right Ctrl keeps working in them.");
const char *const capturingHelp = QT_TRANSLATE_NOOP("Talmo", "Press the key now. Esc leaves it as it is.");

} // namespace

HotkeyRows::HotkeyRows(std::shared_ptr<HotkeySettings> settings)
    : m_settings(std::move(settings)),
      m_watcher(*m_settings, [this] { refresh(); }, this)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    m_keysLine = new QWidget;
    m_keys = new QHBoxLayout(m_keysLine);
    m_keys->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_keysLine);
    auto *buttons = new QHBoxLayout;
    m_change = addButton(*buttons);
    m_add = addButton(*buttons);
    buttons->addStretch(1);
    column->addLayout(buttons);
    m_help = TintedLabel::caption({});
    column->addWidget(m_help);
    m_suggestionLine = new QWidget;
    auto *suggestion = new QHBoxLayout(m_suggestionLine);
    suggestion->setContentsMargins(0, 0, 0, 0);
    m_question = TintedLabel::caption({});
    suggestion->addWidget(m_question, 1);
    m_suggestion = addButton(*suggestion);
    column->addWidget(m_suggestionLine);
    m_problem = new WarningRow;
    column->addWidget(m_problem);
    connect(m_change, &QPushButton::clicked, this, [this] { toggleCapture(HotkeySettings::Capture::Replace); });
    connect(m_add, &QPushButton::clicked, this, [this] { toggleCapture(HotkeySettings::Capture::Add); });
    connect(m_suggestion, &QPushButton::clicked, this, [this] {
        if (const auto key = m_settings->suggestion()) {
            m_settings->use(key->id);
        }
    });
    refresh();
}

QPushButton *HotkeyRows::addButton(QHBoxLayout &row)
{
    auto *button = new QPushButton;
    button->setFont(Appearance::font(Appearance::detailSize));
    row.addWidget(button);
    return button;
}

void HotkeyRows::toggleCapture(HotkeySettings::Capture capture)
{
    if (m_settings->capture()) {
        m_settings->endCapture();
    } else {
        m_settings->beginCapture(capture);
    }
}

void HotkeyRows::hideEvent(QHideEvent *event)
{
    m_settings->endCapture();
    keepKeysFromControls(false);
    QWidget::hideEvent(event);
}

/// The key that is pressed must not also act in the window, as Tab or Page Down would.
void HotkeyRows::keepKeysFromControls(bool isCapturing)
{
    if (std::exchange(m_isFiltering, isCapturing) == isCapturing) {
        return;
    }
    if (isCapturing) {
        qApp->installEventFilter(this);
    } else {
        qApp->removeEventFilter(this);
    }
}

bool HotkeyRows::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        event->accept();
        return true;
    case QEvent::WindowDeactivate:
        if (watched == window()) {
            m_settings->endCapture();
        }
        return false;
    default:
        return false;
    }
}

void HotkeyRows::refresh()
{
    const auto capture = m_settings->capture();
    keepKeysFromControls(capture.has_value() && isVisible());
    const QString waiting = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Press a key…"));
    m_change->setText(capture == HotkeySettings::Capture::Replace
                          ? waiting
                          : Wording::text(QT_TRANSLATE_NOOP("Talmo", "Press the key you want")));
    m_add->setText(capture == HotkeySettings::Capture::Add ? waiting
                                                           : Wording::text(QT_TRANSLATE_NOOP("Talmo", "Add another")));
    m_change->setEnabled(capture != HotkeySettings::Capture::Add);
    m_add->setEnabled(capture != HotkeySettings::Capture::Replace);
    m_help->setText(Wording::text(capture ? capturingHelp : restingHelp));
    m_problem->setText(m_settings->problem());
    refreshKeys();
    const auto suggestion = m_settings->suggestion();
    m_suggestionLine->setVisible(suggestion && !capture);
    if (suggestion) {
        m_question->setText(Wording::textWithKey(QT_TRANSLATE_NOOP("Talmo", "No %1 on your keyboard?"),
                                                 m_settings->keys().first().title));
        m_suggestion->setText(Wording::textWithKey(QT_TRANSLATE_NOOP("Talmo", "Use %1"), suggestion->title));
    }
}

/// One key is shown in the row above.
void HotkeyRows::refreshKeys()
{
    while (auto *item = m_keys->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const auto keys = m_settings->keys();
    m_keysLine->setVisible(keys.size() > 1);
    if (keys.size() < 2) {
        return;
    }
    for (const auto &key : keys) {
        auto *cap = new KeyCap;
        cap->setText(Wording::text(key.title));
        m_keys->addWidget(cap);
        auto *remove = addButton(*m_keys);
        remove->setText(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Remove")));
        remove->setAccessibleName(Wording::textWithKey(QT_TRANSLATE_NOOP("Talmo", "Remove %1"), key.title));
        // Queued: reading the keys again deletes the button.
        connect(
            remove, &QPushButton::clicked, this, [this, id = key.id] { m_settings->remove(id); }, Qt::QueuedConnection);
    }
    m_keys->addStretch(1);
}

} // namespace talmo
