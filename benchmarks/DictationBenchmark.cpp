#include "Benchmarks.h"
#include "SpokenText.h"

#include "Insertion/ClipboardPasteInsertionService.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"

#include <QRegularExpression>

#include <iterator>

namespace talmo::benchmarks {

namespace {

using namespace std::chrono_literals;
using testbed::sleepFor;

const QString barePaste = QStringLiteral("bare paste -> text in the window");

class Dictations {
public:
    Dictations(TalmoDesktop &desktop, Figures &table)
        : on(desktop),
          figures(table),
          wav(testbed::speak(QStringLiteral("thank you very much we will meet again on monday"), on.desktop.folder()))
    {
        figures.row(QStringLiteral("held: key pressed -> recording"), ms, barePaste);
        figures.row(QStringLiteral("held: key released -> recognised"), ms, barePaste);
        figures.row(QStringLiteral("held: key released -> text in the window"), ms, barePaste);
        figures.row(QStringLiteral("hands-free: key pressed -> recognised"), ms, barePaste);
        figures.row(QStringLiteral("hands-free: key pressed -> text in the window"), ms, barePaste);
        figures.row(barePaste);
        figures.row(keyEvent, ms, barePaste);
    }

    void hold(const QString &kind = QStringLiteral("held"))
    {
        mark();
        const Time pressed = std::chrono::steady_clock::now();
        on.keyboard.press(TalmoDesktop::key);
        figures.row(keyEvent).add(pressed, on.talmoSays(QStringLiteral("flagsChanged raw="), talmoFrom));
        figures.row(kind + QStringLiteral(": key pressed -> recording"), ms, barePaste)
            .add(pressed, on.talmoSays(QStringLiteral("state: recording"), talmoFrom));
        on.sound.play(wav);
        finish(kind + QStringLiteral(": key released"), [this] { on.keyboard.release(TalmoDesktop::key); });
    }

    /// One that Talmo has never heard, and so must get to know first.
    void holdAtUnknownMicrophone()
    {
        const QString name = QStringLiteral("unknown%1").arg(++unknown);
        on.sound.addNamedMicrophone(name, name);
        on.sound.makeDefault(name);
        hold(QStringLiteral("unknown microphone"));
        on.sound.makeDefault(QStringLiteral("mic"));
        on.sound.removeNamedMicrophone(name);
    }

    void tapTwice()
    {
        mark();
        for (int tap = 0; tap < 2; ++tap) {
            on.keyboard.press(TalmoDesktop::key);
            sleepFor(40ms);
            on.keyboard.release(TalmoDesktop::key);
            sleepFor(40ms);
        }
        on.talmoSays(QStringLiteral("state: recording"), talmoFrom);
        on.sound.play(wav);
        finish(QStringLiteral("hands-free: key pressed"), [this] { on.keyboard.tap(TalmoDesktop::key); });
    }

    void paste()
    {
        const auto shown = on.window->lines().size();
        const Time before = std::chrono::steady_clock::now();
        pasteboard.setString(QStringLiteral("Thank you very much we will meet again on monday."));
        poster.post({ClipboardPasteInsertionService::pasteKeyCode, true, ClipboardPasteInsertionService::commandFlag});
        figures.row(barePaste).add(before, on.windowShows(QStringLiteral("text: "), shown));
    }

private:
    void mark()
    {
        talmoFrom = on.talmo->lines().size();
        windowFrom = on.window->lines().size();
    }

    /// From the end of the gesture.
    void finish(const QString &name, const std::function<void()> &endGesture)
    {
        const Time ended = std::chrono::steady_clock::now();
        endGesture();
        figures.row(name + QStringLiteral(" -> recognised"), ms, barePaste)
            .add(ended, on.talmoSays(QStringLiteral("raw transcript: "), talmoFrom));
        figures.row(name + QStringLiteral(" -> text in the window"), ms, barePaste)
            .add(ended, on.windowShows(QStringLiteral("text: "), windowFrom));
        on.talmoSays(QStringLiteral("state: idle"), talmoFrom);
        sleepFor(1500ms); // Until the clipboard is restored and a press no longer counts as a second tap.
        addStages();
    }

    /// What Talmo itself has noted, beginning with the release.
    void addStages()
    {
        static const QRegularExpression line(QStringLiteral("^(\\S.*?) +[\\d.]+ +([\\d.]+)$"),
                                             QRegularExpression::MultilineOption);
        bool isAfterRelease = false;
        auto match = line.globalMatch(on.talmoctl({QStringLiteral("trace")}));
        while (match.hasNext()) {
            const auto stage = match.next();
            if (isAfterRelease) {
                figures.row(QStringLiteral("  stage: ") + stage.captured(1)).add(stage.captured(2).toDouble());
            }
            isAfterRelease = isAfterRelease || stage.captured(1) == QLatin1String("key released");
        }
    }

    const QString ms = QStringLiteral("ms");
    const QString keyEvent = QStringLiteral("key event -> handleFlagsChanged has logged it");
    TalmoDesktop &on;
    Figures &figures;
    QString wav;
    std::size_t talmoFrom = 0;
    std::size_t windowFrom = 0;
    int unknown = 0;
    std::shared_ptr<XSession> session = XSession::open();
    XcbPasteboard pasteboard{session};
    XTestKeyEventPoster poster{session, pasteboard.transaction()};
};

} // namespace

void measureDictations(TalmoDesktop &on, Figures &figures, int rounds)
{
    constexpr int warmUp = 4;
    Dictations dictations(on, figures);
    dictations.hold(QStringLiteral("first dictation"));
    double warm = 0;
    for (int round = 0; round < rounds; ++round) {
        if (round == warmUp) {
            warm = on.residentSize();
        }
        dictations.hold();
        dictations.paste();
        dictations.tapTwice();
        dictations.paste();
    }
    if (rounds > warmUp) {
        figures.row(QStringLiteral("growth per dictation, warm"), QStringLiteral("KB"))
            .add((on.residentSize() - warm) / (2.0 * (rounds - warmUp)));
    }
}

void measureUnknownMicrophones(TalmoDesktop &on, Figures &figures, int rounds)
{
    Dictations dictations(on, figures);
    dictations.hold(QStringLiteral("first dictation"));
    for (int round = 0; round < rounds; ++round) {
        dictations.hold();
        dictations.holdAtUnknownMicrophone();
        dictations.paste();
    }
}

void measureColdStarts(TalmoDesktop &on, Figures &figures, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        on.startTalmo();
        Dictations dictations(on, figures);
        dictations.hold(QStringLiteral("engine not loaded"));
        dictations.hold();
        dictations.paste();
    }
}

void dictateOnce(TalmoDesktop &on, Figures &figures, const QString &kind)
{
    Dictations(on, figures).hold(kind);
}

} // namespace talmo::benchmarks
