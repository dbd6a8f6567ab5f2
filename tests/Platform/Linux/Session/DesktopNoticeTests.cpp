#include "Platform/Linux/Session/DesktopNotice.h"

#include "DesktopParts.h"
#include "Support/NotificationService.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>

namespace talmo::test {

/// One test: a process connects to its session bus only once.
TEST(DesktopNotice, isShownByServiceOfSessionBus)
{
    const QTemporaryDir folder;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
    const auto bus = testbed::startBus(environment);
    showDesktopNotice(u"Nobody shows this, and nobody waits for it."_s);
    NotificationService service;
    showDesktopNotice(u"Part of the clipboard was lost."_s);
    // Where the bus can start a service, it keeps the first notice for that.
    const auto isMeant = [](const auto &each) { return each.text.startsWith(u"Part"_s); };
    ASSERT_TRUE(waitFor([&] { return !service.shown().isEmpty() && isMeant(service.shown().last()); }));
    const auto &notice = service.shown().last();
    EXPECT_EQ(notice.application, u"Talmo"_s);
    EXPECT_EQ(notice.title, u"Talmo"_s);
    EXPECT_EQ(notice.text, u"Part of the clipboard was lost."_s);
    EXPECT_EQ(notice.icon, u"io.github.talmo.Talmo"_s);
    EXPECT_EQ(std::count_if(service.shown().begin(), service.shown().end(), isMeant), 1);
}

} // namespace talmo::test
