#include "Benchmarks.h"

#include "Cleanup/LocalFormatting.h"

#include <ctime>

namespace talmo::benchmarks {

namespace {

constexpr qsizetype shortLength = 100'000;

QString repeated(QStringView sentence, qsizetype length)
{
    QString text;
    while (text.size() < length) {
        text += sentence;
    }
    return text;
}

/// What happens to a transcript without a language model. Returns something that depends on all of it.
qsizetype format(const QString &transcript)
{
    const auto segments = splitIntoSegments(transcript);
    std::vector<QString> formatted;
    formatted.reserve(segments.size());
    for (const auto &segment : segments) {
        formatted.push_back(formatLocally(detectBulletRequest(segment.text).text));
    }
    return joinSegments(formatted, segments).size();
}

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Of processor time: on a busy machine the longer text would be interrupted, and the shorter one not.
double seconds(const QString &text)
{
    const double before = processorSeconds();
    const volatile qsizetype size = format(text);
    static_cast<void>(size);
    return processorSeconds() - before;
}

void measure(Figures &figures, const QString &script, QStringView sentence, int rounds)
{
    const QString text = repeated(sentence, shortLength);
    const QString tenfold = repeated(sentence, 10 * shortLength);
    const double megabytes = static_cast<double>(text.toUtf8().size()) / 1e6;
    for (int round = 0; round < rounds; ++round) {
        const double once = seconds(text);
        const double tenTimes = seconds(tenfold);
        figures.row(QStringLiteral("split, detect, format: ") + script, QStringLiteral("MB/s")).add(megabytes / once);
        figures.row(QStringLiteral("ten times the text, in times the time: ") + script, QStringLiteral("x"))
            .add(tenTimes / once);
    }
}

} // namespace

void measureText(Figures &figures, int rounds)
{
    measure(figures, QStringLiteral("ASCII"),
            u"we will meet again on monday at the office new line please bring the report and the list with you ",
            rounds);
    measure(
        figures, QStringLiteral("mixed scripts"),
        u"wir treffen uns am Montag um zehn Uhr für Käse – встретимся в понедельник new line 月曜日に会いましょう 🎉 ",
        rounds);
}

} // namespace talmo::benchmarks
