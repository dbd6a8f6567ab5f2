#pragma once

#include "DesktopParts.h"
#include "EndToEnd/TalmoFixture.h"
#include "VirtualPointer.h"

#include <QImage>

#include <algorithm>
#include <utility>

namespace talmo::test {

/// Talmo and its windows on a desktop with a pointer.
class UiFixture : public TalmoFixture {
protected:
    static constexpr QSize screen{1024, 640};

    /// Talmo's unmanaged windows that are larger than an icon.
    QList<testbed::VirtualDesktop::Window> cards()
    {
        QList<testbed::VirtualDesktop::Window> found;
        for (const auto &shown : desktop.visibleWindows()) {
            if (shown.program == "talmo" && !shown.isManaged && shown.geometry.width() > 100) {
                found.append(shown);
            }
        }
        return found;
    }
    bool cardComes()
    {
        return testbed::pollUntil([this] { return !cards().isEmpty(); }, timeout);
    }
    bool cardGoes()
    {
        return testbed::pollUntil([this] { return cards().isEmpty(); }, timeout);
    }
    bool isSomethingFullScreen()
    {
        const auto shown = desktop.visibleWindows();
        return std::any_of(shown.cbegin(), shown.cend(),
                           [](const auto &each) { return each.geometry.size() == screen; });
    }
    /// Whether the topmost window is a card.
    bool cardIsInFront() { return !cards().isEmpty() && desktop.visibleWindows().last().program == "talmo"; }

    QImage corner() { return desktop.screenshot().copy(screen.width() - 30, 0, 30, 26); }
    QPoint icon{screen.width() - 12, 12};

    void startTray() { tray = testbed::startTray(environment); }
    /// Waits until the icon is drawn.
    void startTalmoWithIcon()
    {
        const QImage before = corner();
        startTalmo();
        ASSERT_TRUE(testbed::pollUntil([&] { return corner() != before; }, timeout));
        // Two equal screenshots: drawing has finished.
        QImage last;
        ASSERT_TRUE(testbed::pollUntil([&] { return std::exchange(last, corner()) == last; }, timeout));
    }
    bool openPanel()
    {
        pointer.clickAt(icon);
        return cardComes();
    }

    testbed::VirtualPointer pointer;
    std::unique_ptr<testbed::ChildProcess> tray;
    std::unique_ptr<testbed::ChildProcess> compositor;
};

} // namespace talmo::test
