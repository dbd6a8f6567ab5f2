#include "Main/FirstTimeNotices.h"

#include "Base/CancellableWait.h"
#include "Base/Task.h"
#include "UI/Style/Wording.h"

#include <utility>

namespace talmo {

namespace {

const QString welcomeShownKey = QStringLiteral("linux.welcomeShown");
const QString iconMissingToldKey = QStringLiteral("linux.iconMissingTold");

} // namespace

FirstTimeNotices::FirstTimeNotices(Parts parts)
    : m_parts(std::move(parts))
{
}

QString FirstTimeNotices::describe(const DesktopLimit &limit)
{
    return Wording::text(limit.sentence) + QLatin1Char(' ') + Wording::text(limit.remedy);
}

void FirstTimeNotices::show()
{
    tellLimits();
    if (isFirstTime(welcomeShownKey)) {
        m_parts.welcome();
    }
    if (!m_parts.defaults->boolean(iconMissingToldKey).value_or(false)) {
        logEscapes(tellThatIconIsMissing(this));
    }
}

bool FirstTimeNotices::isFirstTime(const QString &key)
{
    const bool isFirst = !m_parts.defaults->boolean(key).value_or(false);
    if (isFirst) {
        m_parts.defaults->set(key, true);
    }
    return isFirst;
}

void FirstTimeNotices::tellLimits()
{
    for (const auto &limit : m_parts.desktop->limits) {
        if (isFirstTime(QStringLiteral("linux.told.") + QString::fromUtf8(limit.name))) {
            m_parts.notify(describe(limit));
        }
    }
}

QCoro::Task<void> FirstTimeNotices::tellThatIconIsMissing(QPointer<FirstTimeNotices> self)
{
    const std::shared_ptr<Clock> clock = self->m_parts.clock;
    const auto time = clock->sleep(panelStartTime);
    const bool isDue = co_await hasElapsed(time);
    if (!isDue || !self) {
        co_return;
    }
    const auto &icon = self->m_parts.desktop->statusItem;
    if (!icon || icon->isShown()) {
        co_return;
    }
    self->m_parts.defaults->set(iconMissingToldKey, true);
    self->m_parts.notify(Wording::text(QT_TRANSLATE_NOOP(
        "Talmo", "Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings.")));
}

} // namespace talmo
