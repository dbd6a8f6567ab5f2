// Prints the table of docs/Performance.md. scripts/bench says what the options are.

#include "Base/Error.h"
#include "Benchmarks.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace talmo::benchmarks {

namespace {

struct Options {
    QStringList groups;
    QString programs;
    int rounds = 20;
    bool isJson = false;

    bool has(const char *group) const { return groups.isEmpty() || groups.contains(QLatin1String(group)); }
    bool needDesktop() const
    {
        return has("start") || has("cold") || has("idle") || has("dictation") || has("microphone") || has("paste") ||
               has("unloading");
    }
};

Options readOptions(const QCoreApplication &application)
{
    QCommandLineParser parser;
    const QCommandLineOption only(QStringLiteral("only"), QString(), QStringLiteral("groups"));
    const QCommandLineOption programs(QStringLiteral("programs"), QString(), QStringLiteral("folder"));
    const QCommandLineOption json(QStringLiteral("json"));
    parser.addOptions({only, programs, json});
    parser.process(application);
    Options options;
    options.groups = parser.value(only).split(QLatin1Char(','), Qt::SkipEmptyParts);
    options.programs = parser.value(programs);
    options.isJson = parser.isSet(json);
    if (!parser.positionalArguments().isEmpty()) {
        options.rounds = std::max(1, parser.positionalArguments().first().toInt());
    }
    return options;
}

void measureOnDesktop(const Options &options, Figures &figures)
{
    TalmoDesktop desktop(options.programs);
    if (options.has("start")) {
        measureStarts(desktop, figures, std::max(5, options.rounds / 2));
    }
    if (options.has("cold")) {
        measureColdStarts(desktop, figures, std::max(3, options.rounds / 2));
    }
    if (options.has("idle")) {
        measureIdling(desktop, figures);
    } else {
        desktop.startTalmo();
    }
    if (options.has("dictation")) {
        measureDictations(desktop, figures, options.rounds);
    }
    if (options.has("microphone")) {
        measureUnknownMicrophones(desktop, figures, options.rounds);
    }
    if (options.has("paste")) {
        measurePasting(desktop, figures, std::max(3, options.rounds / 2));
    }
    if (options.has("unloading")) {
        measureUnloading(desktop, figures);
    }
}

void measure(const Options &options, Figures &figures)
{
    if (options.has("text")) {
        measureText(figures, options.rounds);
    }
    if (options.has("audio")) {
        measureAudio(figures);
    }
    if (options.has("recognition")) {
        measureRecognition(figures, options.rounds);
    }
    if (options.has("hour")) {
        constexpr int hour = 60;
        measureHour(figures, std::min(hour, 3 * options.rounds));
    }
    if (options.has("model")) {
        measureModel(figures, std::max(3, options.rounds / 4));
    }
    if (options.needDesktop()) {
        measureOnDesktop(options, figures);
    }
}

int run(const Options &options)
{
    Figures figures;
    try {
        measure(options, figures);
    } catch (const Error &error) {
        std::fprintf(stderr, "bench: %s\n", qUtf8Printable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
    options.isJson ? figures.printJson() : figures.print();
    return EXIT_SUCCESS;
}

} // namespace

} // namespace talmo::benchmarks

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    return talmo::benchmarks::run(talmo::benchmarks::readOptions(application));
}
