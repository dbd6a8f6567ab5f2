#include "UI/Accessibility/Announcement.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QRect>

#include <deque>
#include <utility>

namespace talmo {

namespace {

/// A screen reader asks for the text after it is notified of the announcement; by then there may be newer ones.
constexpr std::size_t mostKept = 16;

/// Qt has a call for announcements only from 6.8 on. A notification that appears is spoken by every screen reader.
class Announcement final : public QAccessibleInterface {
public:
    explicit Announcement(QString text)
        : m_text(std::move(text))
    {
    }

    bool isValid() const override { return true; }
    QObject *object() const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }
    QString text(QAccessible::Text text) const override { return text == QAccessible::Name ? m_text : QString(); }
    void setText(QAccessible::Text /*text*/, const QString & /*value*/) override {}
    QRect rect() const override { return {}; }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(QCoreApplication::instance());
    }
    QAccessibleInterface *child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface *childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface * /*child*/) const override { return -1; }

private:
    QString m_text;
};

} // namespace

void announceToScreenReader(const QString &text)
{
    if (!QAccessible::isActive() || text.isEmpty()) {
        return;
    }
    static std::deque<QAccessible::Id> kept;
    if (kept.size() == mostKept) {
        QAccessible::deleteAccessibleInterface(kept.front());
        kept.pop_front();
    }
    // Each has an object of its own: if one object's text changed, the later text could be read twice.
    auto *announcement = new Announcement(text); // The registry owns it.
    kept.push_back(QAccessible::registerAccessibleInterface(announcement));
    QAccessibleEvent appeared(announcement, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appeared);
}

} // namespace talmo
