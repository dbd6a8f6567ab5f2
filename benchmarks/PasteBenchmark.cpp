#include "Benchmarks.h"

#include <QProcess>

namespace talmo::benchmarks {

namespace {

using namespace std::chrono_literals;

/// Begins and ends with the number, so that the window shows when all of it is there.
QString textOf(int length, int number)
{
    const QString mark = QStringLiteral("<%1>").arg(number);
    QString text;
    while (text.size() < length - mark.size()) {
        text += QStringLiteral("lorem ipsum ");
    }
    text.truncate(length - mark.size());
    return text + mark;
}

class Pastes {
public:
    Pastes(TalmoDesktop &desktop, Figures &table, int length)
        : on(desktop),
          figures(table),
          m_length(length)
    {
        on.openWindow();
    }

    /// `way`: puts the text into the window.
    void time(const QString &name, const std::function<void(const QString &)> &way)
    {
        const QString text = textOf(m_length, ++m_number);
        const Time before = std::chrono::steady_clock::now();
        way(text);
        figures.row(rowName(name), QStringLiteral("ms"), rowName(QStringLiteral("xclip and chord")))
            .add(before, on.windowShows(text.right(6).section(QLatin1Char('<'), 1).prepend(QLatin1Char('<'))));
        testbed::sleepFor(500ms); // Until the clipboard is restored.
    }

    void byTalmo()
    {
        time(QStringLiteral("talmoctl insert"),
             [this](const QString &text) { on.talmoctl({QStringLiteral("insert"), QStringLiteral("--raw")}, text); });
    }
    void byClipboard()
    {
        time(QStringLiteral("xclip and chord"), [this](const QString &text) {
            run(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard")}, text);
            run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("ctrl+v")});
        });
    }
    void byTyping()
    {
        time(QStringLiteral("xdotool type"), [this](const QString &text) {
            run(QStringLiteral("xdotool"),
                {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("1"), text});
        });
    }

private:
    QString rowName(const QString &way) const { return QStringLiteral("%1 characters: %2").arg(m_length).arg(way); }

    void run(const QString &program, const QStringList &arguments, const QString &input = {})
    {
        QProcess process;
        process.setProcessEnvironment(on.environment);
        // What xclip leaves running must not keep a pipe of ours open.
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        process.write(input.toUtf8());
        process.closeWriteChannel();
        process.waitForFinished(static_cast<int>(TalmoDesktop::timeout.count()));
    }

    TalmoDesktop &on;
    Figures &figures;
    int m_length;
    int m_number = 0;
};

} // namespace

void measurePasting(TalmoDesktop &on, Figures &figures, int rounds)
{
    constexpr int longestTyped = 2000;
    for (const int length : {20, 200, longestTyped, 1'000'000}) {
        Pastes pastes(on, figures, length);
        for (int round = 0; round < rounds; ++round) {
            pastes.byTalmo();
            pastes.byClipboard();
        }
        // Last, and rarely: it takes seconds, and the window draws itself for each character.
        for (int round = 0; round < 2 && length <= longestTyped; ++round) {
            pastes.byTyping();
        }
    }
}

} // namespace talmo::benchmarks
