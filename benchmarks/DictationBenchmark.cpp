// Measures how long users wait: from releasing the key until the text is in the window, and how much of that is
// recognition. Each dictation is followed by a bare paste of the same text through the same clipboard and keys, so that
// the figures can be read as multiples of the minimum for any dictation.

#include "ChildProcess.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include "Base/Error.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;
using Time = std::chrono::steady_clock::time_point;
constexpr Timeout timeout = 30s;

struct Series {
    const char *name;
    std::vector<double> milliseconds;

    void add(Time from, Time to)
    {
        milliseconds.push_back(std::chrono::duration<double, std::milli>(to - from).count());
    }
    double percentile(double share) const
    {
        auto sorted = milliseconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1) + 0.5)];
    }
};

class Bench {
public:
    Bench()
    {
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("talmo.general.debug=true"));
        const QDir programs(QCoreApplication::applicationDirPath());
        window = std::make_unique<ChildProcess>(programs.filePath(QStringLiteral("talmo-demo-window")),
                                                QStringList{QStringLiteral("Target")}, environment);
        if (!desktop.waitForActiveWindow(QStringLiteral("Target"), timeout)) {
            throw Error(QStringLiteral("The window did not open."));
        }
        talmo = std::make_unique<ChildProcess>(programs.filePath(QStringLiteral("talmo")), QStringList{}, environment);
        waitFor(*talmo, QStringLiteral("ready:"), 0);
    }

    void dictate(const QString &wav)
    {
        auto from = talmo->lines().size();
        const auto shown = window->lines().size();
        const Time pressed = std::chrono::steady_clock::now();
        keyboard.press(VirtualKeyboard::controlRight);
        recording.add(pressed, waitFor(*talmo, QStringLiteral("state: recording"), from));
        sound.play(wav);
        const Time released = std::chrono::steady_clock::now();
        keyboard.release(VirtualKeyboard::controlRight);
        recognised.add(released, waitFor(*talmo, QStringLiteral("raw transcript: "), from));
        inWindow.add(released, waitFor(*window, QStringLiteral("text: "), shown));
        waitFor(*talmo, QStringLiteral("state: idle"), from);
        sleepFor(2s); // Until the clipboard is restored and a press no longer counts as a second tap.
    }

    void pasteOnly(const QString &text)
    {
        const auto shown = window->lines().size();
        const Time before = std::chrono::steady_clock::now();
        pasteboard.setString(text);
        poster.post({ClipboardPasteInsertionService::pasteKeyCode, true, ClipboardPasteInsertionService::commandFlag});
        paste.add(before, waitFor(*window, QStringLiteral("text: "), shown));
    }

    void report() const
    {
        const double unit = paste.percentile(0.5);
        std::printf("%-34s %9s %9s %14s\n", "", "p50 ms", "p95 ms", "p50 / paste");
        for (const auto *series : {&recording, &recognised, &inWindow, &paste}) {
            std::printf("%-34s %9.1f %9.1f %14.1f\n", series->name, series->percentile(0.5), series->percentile(0.95),
                        series->percentile(0.5) / unit);
        }
    }

private:
    static Time waitFor(ChildProcess &process, const QString &text, std::size_t from)
    {
        const auto line = process.waitForLine(text, timeout, from);
        if (!line) {
            throw Error(QStringLiteral("Timed out waiting for “%1”:\n%2").arg(text, process.output()));
        }
        return line->time;
    }

    VirtualDesktop desktop;
    QProcessEnvironment environment = desktop.environment();
    SoundServer sound{desktop.folder() + QStringLiteral("/sound"), environment};
    VirtualKeyboard keyboard;
    std::unique_ptr<ChildProcess> window;
    std::unique_ptr<ChildProcess> talmo;
    std::shared_ptr<XSession> session = XSession::open();
    XcbPasteboard pasteboard{session};
    XTestKeyEventPoster poster{session, pasteboard.transaction()};
    Series recording{"key pressed -> recording", {}};
    Series recognised{"key released -> transcript", {}};
    Series inWindow{"key released -> text in window", {}};
    Series paste{"bare paste -> text in window", {}};
};

int run(int rounds)
{
    Bench bench;
    const QTemporaryDir folder;
    const QString wav = speak(QStringLiteral("thank you very much we will meet again on monday"), folder.path());
    for (int round = 0; round < rounds; ++round) {
        bench.dictate(wav);
        bench.pasteOnly(QStringLiteral("Thank you very much we will meet again on monday."));
    }
    std::printf("%d dictations of 3 s each into a Qt window\n", rounds);
    bench.report();
    return EXIT_SUCCESS;
}

} // namespace

} // namespace talmo::testbed

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    try {
        constexpr int defaultRounds = 20;
        const int rounds = argc > 1 ? QCoreApplication::arguments().at(1).toInt() : defaultRounds;
        return talmo::testbed::run(std::max(rounds, 1));
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "bench: %s\n", qUtf8Printable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
}
