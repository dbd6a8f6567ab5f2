// How long a text takes into a window of a Wayland compositor, by Talmo and by others in the same run, in turn.
// talmo-wayland-bench [sway|kwin] [ROUNDS]; scripts/bench-wayland starts it.

#include "DesktopParts.h"
#include "Figures.h"
#include "KdeDesktop.h"
#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/WaylandSession.h"
#include "SoundServer.h"
#include "WaylandDesktop.h"

#include "Base/Error.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <cstdio>

#include <linux/input-event-codes.h>

namespace talmo::benchmarks {

namespace {

using namespace std::chrono_literals;

constexpr testbed::Timeout timeout = 30s;

/// Talmo and a window that tells what text it has, on a compositor.
class Session {
public:
    Session(const QString &folder, const QProcessEnvironment &environment)
        : m_environment(environment),
          m_sound(folder + QStringLiteral("/sound"), m_environment),
          m_window(QStringLiteral(TALMO_BIN "/talmo-gtk-window"), {}, m_environment),
          m_talmo(QStringLiteral(TALMO_BIN "/talmo"), {}, m_environment)
    {
        if (!m_talmo.waitForLine(QStringLiteral("ready:"), timeout) ||
            !m_window.waitForLine(QStringLiteral("focus: yes"), timeout)) {
            throw Error(QStringLiteral("Talmo or the window did not start: ") + m_talmo.output());
        }
    }

    void run(const QString &program, const QStringList &arguments, const QString &input = {})
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        // What wl-copy leaves running must not keep a pipe of ours open.
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        process.write(input.toUtf8());
        process.closeWriteChannel();
        process.waitForFinished(static_cast<int>(timeout.count()));
    }
    void talmoctl(const QStringList &arguments, const QString &input = {})
    {
        run(QStringLiteral(TALMO_BIN "/talmoctl"), arguments, input);
    }

    /// From the start of the first program to the text in the window.
    void time(Figure &figure, const std::function<void(const QString &text)> &way)
    {
        const QString text = QStringLiteral("a text of some words, number <%1>").arg(++m_number);
        const auto before = m_window.lines().size();
        const Time start = std::chrono::steady_clock::now();
        way(text);
        const auto shown = m_window.waitForLine(QStringLiteral("<%1>").arg(m_number), timeout, before);
        if (!shown) {
            throw Error(QStringLiteral("The text did not arrive: ") + figure.name);
        }
        figure.add(start, shown->time);
        testbed::sleepFor(400ms); // Until the clipboard is restored.
    }
    void timeProgram(Figure &figure, const QString &program, const QStringList &arguments)
    {
        const Time start = std::chrono::steady_clock::now();
        run(program, arguments);
        figure.add(start, std::chrono::steady_clock::now());
    }

private:
    QProcessEnvironment m_environment;
    testbed::SoundServer m_sound;
    testbed::ChildProcess m_window;
    testbed::ChildProcess m_talmo;
    int m_number = 0;
};

const QString ms = QStringLiteral("ms");

void measureCommon(Session &session, Figures &figures, const QString &name)
{
    const QString reference = name + QStringLiteral(": wl-copy, then Ctrl+V");
    session.time(figures.row(name + QStringLiteral(": talmoctl insert"), ms, reference),
                 [&](const QString &text) { session.talmoctl({QStringLiteral("insert")}, text); });
    const QString trivial = name + QStringLiteral(": start and end of true");
    session.timeProgram(figures.row(trivial), QStringLiteral("true"), {});
    // Without a press, the release does nothing but go all the way.
    session.timeProgram(figures.row(name + QStringLiteral(": talmoctl release"), ms, trivial),
                        QStringLiteral(TALMO_BIN "/talmoctl"), {QStringLiteral("release")});
}

void copy(Session &session, const QString &text)
{
    session.run(QStringLiteral("wl-copy"), {QStringLiteral("--type"), QStringLiteral("text/plain;charset=utf-8")},
                text);
}

/// A keyboard that stays: a compositor may lose the first key of a new one.
class Shortcut {
public:
    explicit Shortcut(const QProcessEnvironment &environment)
    {
        for (const auto *name : {"WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
            qputenv(name, environment.value(QString::fromLatin1(name)).toUtf8());
        }
        m_session = WaylandSession::open();
        m_keyboard = m_session->executor()
                         .call([raw = m_session.get()] { return std::shared_ptr(ChordKeyboard::open(*raw)); })
                         .result();
    }
    ~Shortcut()
    {
        m_session->executor().call([this] { m_keyboard.reset(); }).waitForFinished();
    }
    Shortcut(const Shortcut &) = delete;
    Shortcut &operator=(const Shortcut &) = delete;

    void press()
    {
        m_session->executor()
            .call([this] {
                m_keyboard->post({KEY_LEFTCTRL, KEY_V});
                m_session->flush();
            })
            .waitForFinished();
    }

private:
    std::shared_ptr<WaylandSession> m_session;
    std::shared_ptr<ChordKeyboard> m_keyboard;
};

void measureRound(Session &session, Shortcut &shortcut, Figures &figures, const QString &name)
{
    measureCommon(session, figures, name);
    session.time(figures.row(name + QStringLiteral(": wl-copy, then Ctrl+V")), [&](const QString &text) {
        copy(session, text);
        shortcut.press();
    });
}

void measureSway(Figures &figures, int rounds)
{
    const testbed::WaylandDesktop desktop;
    auto environment = desktop.environment();
    const auto bus = testbed::startBus(environment);
    Shortcut shortcut(environment);
    Session session(desktop.folder(), environment);
    for (int round = 0; round < rounds; ++round) {
        measureRound(session, shortcut, figures, QStringLiteral("sway"));
        session.time(figures.row(QStringLiteral("sway: wtype"), ms, QStringLiteral("sway: wl-copy, then Ctrl+V")),
                     [&](const QString &text) { session.run(QStringLiteral("wtype"), {text}); });
    }
}

/// wtype needs a protocol that KWin does not have.
void measureKWin(Figures &figures, int rounds)
{
    const testbed::KdeDesktop desktop({QStringLiteral(TALMO_BIN "/talmo"), QCoreApplication::applicationFilePath()});
    Shortcut shortcut(desktop.environment());
    Session session(desktop.folder(), desktop.environment());
    for (int round = 0; round < rounds; ++round) {
        measureRound(session, shortcut, figures, QStringLiteral("KWin"));
    }
}

} // namespace

} // namespace talmo::benchmarks

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int rounds = std::max(1, arguments.value(2, QStringLiteral("20")).toInt());
    try {
        talmo::benchmarks::Figures figures;
        if (arguments.value(1) == QLatin1String("kwin")) {
            talmo::benchmarks::measureKWin(figures, rounds);
        } else {
            talmo::benchmarks::measureSway(figures, rounds);
        }
        figures.print();
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "%s\n", error.localizedDescription().toUtf8().constData());
        return 1;
    }
    return 0;
}
