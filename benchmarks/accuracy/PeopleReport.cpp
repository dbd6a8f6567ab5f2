#include "accuracy/PeopleReport.h"

#include "Base/Error.h"
#include "accuracy/Listener.h"
#include "accuracy/Scoring.h"
#include "accuracy/SpokenWords.h"
#include "accuracy/StockPocketSphinx.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <random>
#include <set>

namespace talmo::accuracy {

namespace {

struct Heard {
    PersonRecording recording;
    PacedTranscript transcript;
    int words = 0;
    int errors = 0;
};

struct Interval {
    double low = 0;
    double high = 0;
};

/// Of some recordings, in which one engine or two made mistakes.
struct SpeakerSums {
    double words = 0;
    double errors = 0;
    double otherErrors = 0;
};

/// Draws speakers, not recordings: those of one speaker are alike.
Interval interval(const std::map<QString, SpeakerSums> &speakers, const std::function<double(const SpeakerSums &)> &of)
{
    constexpr std::size_t draws = 2000;
    std::vector<SpeakerSums> sums;
    for (const auto &[name, each] : speakers) {
        sums.push_back(each);
    }
    std::mt19937 generator(1);
    std::vector<double> values;
    for (std::size_t draw = 0; draw < draws; ++draw) {
        SpeakerSums drawn;
        for (std::size_t count = 0; count < sums.size(); ++count) {
            const auto &each = sums[generator() % sums.size()];
            drawn.words += each.words;
            drawn.errors += each.errors;
            drawn.otherErrors += each.otherErrors;
        }
        values.push_back(of(drawn));
    }
    std::sort(values.begin(), values.end());
    return {values[draws / 40], values[draws - draws / 40 - 1]};
}

double share(double part, double whole)
{
    return whole > 0 ? part / whole : 0;
}

void addTo(std::map<QString, SpeakerSums> &speakers, const Heard &heard, const Heard *other)
{
    auto &sums = speakers[heard.recording.speaker];
    sums.words += heard.words;
    sums.errors += heard.errors;
    sums.otherErrors += other != nullptr ? other->errors : 0;
}

void printLine(const QString &name, const std::vector<Heard> &all)
{
    std::map<QString, SpeakerSums> speakers;
    double words = 0;
    double errors = 0;
    double processing = 0;
    double length = 0;
    std::vector<double> waits;
    for (const auto &heard : all) {
        addTo(speakers, heard, nullptr);
        words += heard.words;
        errors += heard.errors;
        processing += heard.transcript.processing;
        length += heard.transcript.length;
        waits.push_back(heard.transcript.wait);
    }
    const Interval likely =
        interval(speakers, [](const SpeakerSums &sums) { return 100 * share(sums.errors, sums.words); });
    std::printf("%-24s %5zu %5.0f  %5.1f %% [%.1f, %.1f]  end %.2f s, p90 %.2f s  %.2f of a core\n",
                qUtf8Printable(name), all.size(), words, 100 * share(errors, words), likely.low, likely.high,
                percentile(waits, 0.5), percentile(waits, 0.9), share(processing, length));
}

std::set<QString> kindsOf(const std::vector<PersonRecording> &recordings)
{
    std::set<QString> kinds;
    for (const auto &recording : recordings) {
        kinds.insert(recording.kind);
    }
    return kinds;
}

void printTable(const QString &name, const std::vector<Heard> &all, const std::set<QString> &kinds)
{
    printLine(name, all);
    for (const auto &kind : kinds) {
        std::vector<Heard> some;
        std::copy_if(all.begin(), all.end(), std::back_inserter(some),
                     [&kind](const Heard &heard) { return heard.recording.kind == kind; });
        printLine(QStringLiteral("  ") + kind, some);
    }
    std::fflush(stdout);
}

/// The two have heard the same recordings, in the same order.
void printComparison(const std::vector<Heard> &all, const std::vector<Heard> &stock)
{
    std::map<QString, SpeakerSums> speakers;
    SpeakerSums sum;
    for (std::size_t index = 0; index < all.size(); ++index) {
        addTo(speakers, all[index], &stock[index]);
        sum.words += all[index].words;
        sum.errors += all[index].errors;
        sum.otherErrors += stock[index].errors;
    }
    const auto points = [](const SpeakerSums &sums) { return 100 * share(sums.errors - sums.otherErrors, sums.words); };
    const auto ratio = [](const SpeakerSums &sums) { return share(sums.errors, sums.otherErrors); };
    const Interval likelyPoints = interval(speakers, points);
    const Interval likelyRatio = interval(speakers, ratio);
    std::printf("compared with stock      %+.1f points [%+.1f, %+.1f], %.2f times the words wrong [%.2f, %.2f]\n",
                points(sum), likelyPoints.low, likelyPoints.high, ratio(sum), likelyRatio.low, likelyRatio.high);
}

/// The recordings in which words of the user's, of a command or of a request for a list are heard that nobody said.
void printInvented(const std::vector<Heard> &all, const QStringList &vocabulary)
{
    std::vector<QStringList> phrases;
    for (const auto &each :
         vocabulary + QStringList{QStringLiteral("list"), QStringLiteral("new line"), QStringLiteral("new paragraph"),
                                  QStringLiteral("bullet"), QStringLiteral("bullets"), QStringLiteral("newline")}) {
        phrases.push_back(comparableWords(each));
    }
    for (const auto &phrase : phrases) {
        const auto count = std::count_if(all.begin(), all.end(), [&phrase](const Heard &heard) {
            return occurrences(comparableWords(heard.transcript.text), phrase) >
                   occurrences(comparableWords(heard.recording.transcript), phrase);
        });
        if (count > 0) {
            std::printf("“%s” recognised where nobody said it, in recordings: %td\n",
                        qUtf8Printable(phrase.join(QLatin1Char(' '))), count);
        }
    }
}

std::vector<Heard> hearAll(const PeopleOptions &options, const std::function<PacedTranscript(const QString &)> &hear)
{
    std::vector<Heard> all;
    for (const auto &recording : options.recordings) {
        Heard heard{recording, hear(recording.file), 0, 0};
        const QStringList said = spokenWords(recording.transcript);
        heard.words = static_cast<int>(said.size());
        heard.errors = spokenWordErrors(said, spokenWords(heard.transcript.text));
        if (options.showsErrors && heard.errors > 0) {
            std::printf("    %s\n      said:  %s\n      heard: %s\n",
                        qUtf8Printable(QFileInfo(recording.file).fileName()), qUtf8Printable(recording.transcript),
                        qUtf8Printable(heard.transcript.text));
            std::fflush(stdout);
        }
        all.push_back(heard);
    }
    return all;
}

void writeTranscripts(const QString &path, const std::vector<Heard> &all)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly)) {
        throw Error(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    for (const auto &heard : all) {
        file.write(
            QStringLiteral("%1\t%2\n").arg(QFileInfo(heard.recording.file).fileName(), heard.transcript.text).toUtf8());
    }
}

} // namespace

void reportPeople(const PeopleOptions &options)
{
    const auto kinds = kindsOf(options.recordings);
    std::printf("%-24s %5s %5s  words wrong, and in 95 of 100 choices of speakers\n", "", "files", "words");
    const auto all = hearAll(options, [&options](const QString &file) {
        return Listener({options.engine, options.words, nullptr}).hearPaced(file);
    });
    if (!options.transcripts.isEmpty()) {
        writeTranscripts(options.transcripts, all);
    }
    printTable(options.engine, all, kinds);
    printInvented(all, options.words);
    const auto stock = hearAll(options, &hearWithStockPocketSphinx);
    printTable(QStringLiteral("stock PocketSphinx"), stock, kinds);
    printComparison(all, stock);
}

} // namespace talmo::accuracy
