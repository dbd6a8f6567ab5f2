// Hundreds of dictations in a row, with mixed gestures, windows and clipboards. Reports failures and resource growth.

#include "ChildProcess.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include "Base/Error.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFutureWatcher>

#include <xcb/res.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <vector>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;
constexpr Timeout timeout = 20s;
/// Longer than the window for a double-tap.
constexpr Timeout apart = 320ms;
/// Dictations until everything that is created once exists.
constexpr int warmUp = 20;
constexpr int dictationsPerWindow = 25;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList allActions()
{
    return {text("hold"), text("hands-free"), text("hold"), text("tap"), text("insert")};
}

struct Usage {
    qint64 residentKilobytes = 0;
    qint64 descriptors = 0;
    qint64 threads = 0;
    qint64 serverResources = 0;
};

struct Failures {
    int wrongTexts = 0;
    int wrongClipboards = 0;
    int stuck = 0;
    /// Not a failure of insertion: on a busy machine the speech itself is played with gaps.
    int misheard = 0;
    int sum() const { return wrongTexts + wrongClipboards + stuck; }
};

class Soak {
public:
    explicit Soak(const QStringList &actionsInTurn)
        : actions(actionsInTurn.begin(), actionsInTurn.end())
    {
        environment.insert(text("QT_LOGGING_RULES"), text("talmo.general.debug=true"));
        talmo = std::make_unique<ChildProcess>(program("talmo"), QStringList{}, environment);
        if (!talmo->waitForLine(text("ready:"), timeout)) {
            throw Error(text("Talmo did not start:\n") + talmo->output());
        }
        hello = speak(text("hello world"), desktop.folder());
    }

    Failures run(int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            if (round == std::min(warmUp, rounds / 2)) {
                before = usage();
                roundsBefore = round;
            }
            if (round % dictationsPerWindow == 0) {
                openWindow(round / dictationsPerWindow);
            }
            runRound(round);
            if (failures.stuck > 3) {
                std::printf("stopped: too many stuck states\n");
                break;
            }
            roundsDone = round + 1;
            if (roundsDone % 100 == 0) {
                printProgress();
            }
        }
        return failures;
    }

    void report()
    {
        const auto after = usage();
        std::printf("%d rounds: %d wrong texts, %d wrong clipboards, %d stuck states; %d misheard\n", roundsDone,
                    failures.wrongTexts, failures.wrongClipboards, failures.stuck, failures.misheard);
        const int counted = std::max(1, roundsDone - roundsBefore);
        std::printf("%-22s %10s %10s %12s\n", "", "warm", "end", "per round");
        const auto line = [counted](const char *name, qint64 from, qint64 to) {
            std::printf("%-22s %10lld %10lld %12.3f\n", name, static_cast<long long>(from), static_cast<long long>(to),
                        static_cast<double>(to - from) / counted);
        };
        line("resident set, KB", before.residentKilobytes, after.residentKilobytes);
        line("descriptors", before.descriptors, after.descriptors);
        line("threads", before.threads, after.threads);
        line("X resources", before.serverResources, after.serverResources);
    }

private:
    /// Everything that report() compares, so that a run that is cut short has figures too.
    void printProgress()
    {
        const auto now = usage();
        std::printf("%d rounds, %d failures, %d misheard; %lld KB, %lld descriptors, %lld threads, %lld X resources\n",
                    roundsDone, failures.sum(), failures.misheard, static_cast<long long>(now.residentKilobytes),
                    static_cast<long long>(now.descriptors), static_cast<long long>(now.threads),
                    static_cast<long long>(now.serverResources));
        std::fflush(stdout);
    }

    static QString program(const char *name)
    {
        return QDir(QCoreApplication::applicationDirPath()).filePath(text(name));
    }

    void openWindow(int number)
    {
        window.reset();
        const bool isGtk = number % 2 == 1 && QFile::exists(program("talmo-gtk-window"));
        // A new title each time, so that a window that is still closing is not mistaken for the new one.
        const QString title = isGtk ? text("Target") : text("Window %1").arg(number);
        window = std::make_unique<ChildProcess>(program(isGtk ? "talmo-gtk-window" : "talmo-demo-window"),
                                                QStringList{title}, environment);
        if (!desktop.waitForActiveWindow(title, timeout)) {
            throw Error(text("The window did not open."));
        }
        expected.clear();
        continues = false;
    }

    void runRound(int round)
    {
        const auto clipboard = clipboardFor(round);
        user.writeItems(clipboard);
        finish(user.settled());
        logged = talmo->lines().size();
        act(actions[static_cast<std::size_t>(round) % actions.size()], round);
        if (!pollUntil([&] { return finish(user.items()) == clipboard; }, timeout)) {
            fail(failures.wrongClipboards, round, "the clipboard was not restored");
        }
        sleepFor(apart);
    }

    void act(const QString &action, int round)
    {
        if (action == text("hold")) {
            dictate(false);
        } else if (action == text("hands-free")) {
            dictate(true);
        } else if (action == text("tap")) {
            tapOnly();
        } else if (action == text("insert")) {
            insert(round);
        } else {
            throw Error(text("There is no action “%1”.").arg(action));
        }
    }

    static QList<PasteboardItem> clipboardFor(int round)
    {
        const QByteArray utf8 = "copied " + QByteArray::number(round);
        QList<PasteboardRepresentation> all = {{text("UTF8_STRING"), utf8, text("UTF8_STRING"), 8}};
        if (round % 3 == 1) {
            all.append({text("text/html"), "<b>" + utf8 + "</b>", text("text/html"), 8});
        }
        if (round % 3 == 2) {
            constexpr qsizetype large = 600'000; // Large enough for an incremental transfer.
            all.append({text("image/x-talmo-test"), QByteArray(large, 'x'), text("image/x-talmo-test"), 8});
        }
        if (round % 7 == 6) {
            return {};
        }
        return {{all}};
    }

    void dictate(bool isHandsFree)
    {
        keyboard.press(VirtualKeyboard::controlRight);
        if (isHandsFree) {
            sleepFor(40ms);
            keyboard.release(VirtualKeyboard::controlRight);
            sleepFor(40ms);
            keyboard.press(VirtualKeyboard::controlRight);
            sleepFor(40ms);
            keyboard.release(VirtualKeyboard::controlRight);
        }
        const bool records = comes("state: recording");
        sound.play(hello);
        if (isHandsFree) {
            keyboard.press(VirtualKeyboard::controlRight);
        }
        keyboard.release(VirtualKeyboard::controlRight);
        if (!records || !comes("state: idle")) {
            fail(failures.stuck, roundsDone, "the recording did not start or did not end");
            return;
        }
        const QString meant = lastCleaned();
        failures.misheard += meant == text("Hello world.") ? 0 : 1;
        expect(continues ? QLatin1Char(' ') + meant : meant);
        continues = true;
    }

    /// The text that Talmo meant to insert.
    QString lastCleaned() const
    {
        const QString prefix = text("cleaned transcript: ");
        const auto &lines = talmo->lines();
        const auto found = std::find_if(lines.rbegin(), lines.rend(),
                                        [&prefix](const auto &line) { return line.text.contains(prefix); });
        return found == lines.rend() ? QString() : found->text.mid(found->text.indexOf(prefix) + prefix.size());
    }

    void tapOnly()
    {
        keyboard.press(VirtualKeyboard::controlRight);
        sleepFor(60ms);
        keyboard.release(VirtualKeyboard::controlRight);
    }

    void insert(int round)
    {
        const QString inserted = text("(%1)").arg(round);
        ChildProcess talmoctl(program("talmoctl"), {text("insert")}, environment);
        talmoctl.writeLine(inserted);
        talmoctl.closeInput();
        waitUntil([&talmoctl] { return !talmoctl.isRunning(); }, timeout);
        expect(inserted);
        continues = false;
    }

    void expect(const QString &added)
    {
        expected += added;
        if (!window->waitForLine(text("text: ") + expected, timeout)) {
            fail(failures.wrongTexts, roundsDone, "the window does not contain the dictated text");
            const auto &lines = window->lines();
            expected = lines.empty() ? QString() : lines.back().text.mid(6);
        }
    }

    bool comes(const char *line)
    {
        const auto found = talmo->waitForLine(text(line), timeout, logged);
        while (found && !talmo->lines()[logged++].text.contains(text(line))) {
        }
        return found.has_value();
    }

    template <typename T>
    static T finish(const QFuture<T> &future)
    {
        QFutureWatcher<T> watcher;
        watcher.setFuture(future);
        waitUntil([&future] { return future.isFinished(); }, timeout);
        if constexpr (!std::is_void_v<T>) {
            return future.result();
        }
    }

    void fail(int &count, int round, const char *what)
    {
        ++count;
        std::printf("round %d: %s\n", round, what);
        const auto &lines = talmo->lines();
        for (std::size_t line = lines.size() - std::min<std::size_t>(lines.size(), 6); line < lines.size(); ++line) {
            std::printf("    %s\n", qUtf8Printable(lines[line].text));
        }
        std::fflush(stdout);
    }

    Usage usage()
    {
        const QString process = text("/proc/%1/").arg(talmo->processId());
        QFile status(process + text("status"));
        Usage now;
        if (status.open(QFile::ReadOnly)) {
            for (const auto &line : status.readAll().split('\n')) {
                const auto words = line.simplified().split(' ');
                now.residentKilobytes = words[0] == "VmRSS:" ? words.value(1).toLongLong() : now.residentKilobytes;
                now.threads = words[0] == "Threads:" ? words.value(1).toLongLong() : now.threads;
            }
        }
        now.descriptors =
            QDir(process + text("fd")).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
        now.serverResources = serverResources();
        return now;
    }

    /// The X server's resources for all connections of the process.
    qint64 serverResources()
    {
        auto *connection = counter.get();
        xcb_res_client_id_spec_t everybody{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        const XcbPtr<xcb_res_query_client_ids_reply_t> ids(
            xcb_res_query_client_ids_reply(connection, xcb_res_query_client_ids(connection, 1, &everybody), nullptr));
        qint64 sum = 0;
        auto id = ids ? xcb_res_query_client_ids_ids_iterator(ids.get()) : xcb_res_client_id_value_iterator_t{};
        for (; id.rem > 0; xcb_res_client_id_value_next(&id)) {
            if (xcb_res_client_id_value_value_length(id.data) == 0 ||
                *xcb_res_client_id_value_value(id.data) != static_cast<quint32>(talmo->processId())) {
                continue;
            }
            const XcbPtr<xcb_res_query_client_resources_reply_t> resources(xcb_res_query_client_resources_reply(
                connection, xcb_res_query_client_resources(connection, id.data->spec.client), nullptr));
            auto type =
                resources ? xcb_res_query_client_resources_types_iterator(resources.get()) : xcb_res_type_iterator_t{};
            for (; type.rem > 0; xcb_res_type_next(&type)) {
                sum += type.data->count;
            }
        }
        return sum;
    }

    std::vector<QString> actions;
    VirtualDesktop desktop;
    QProcessEnvironment environment = desktop.environment();
    SoundServer sound{desktop.folder() + text("/sound"), environment};
    VirtualKeyboard keyboard;
    XConnection counter;
    std::shared_ptr<XSession> session = XSession::open();
    XcbPasteboard user{session};
    std::unique_ptr<ChildProcess> talmo;
    std::unique_ptr<ChildProcess> window;
    QString hello;
    QString expected;
    /// A dictation now would continue the last one.
    bool continues = false;
    std::size_t logged = 0;
    Failures failures;
    Usage before;
    int roundsBefore = 0;
    int roundsDone = 0;
};

} // namespace

} // namespace talmo::testbed

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    try {
        constexpr int defaultRounds = 30;
        const int rounds = argc > 1 ? QCoreApplication::arguments().at(1).toInt() : defaultRounds;
        const QStringList actions = QCoreApplication::arguments().mid(2);
        talmo::testbed::Soak soak(actions.isEmpty() ? talmo::testbed::allActions() : actions);
        const auto failures = soak.run(std::max(rounds, 1));
        soak.report();
        return failures.sum() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "soak: %s\n", qUtf8Printable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
}
