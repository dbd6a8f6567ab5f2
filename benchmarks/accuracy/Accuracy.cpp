// Measures recognition accuracy: sentences are played into a sound server, or read from files, and recognised by the
// service that dictations use.

#include "accuracy/Corpus.h"
#include "accuracy/Listener.h"
#include "accuracy/PeopleReport.h"
#include "accuracy/Scoring.h"
#include "accuracy/SoundFiles.h"

#include "Base/Error.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace talmo::accuracy {

namespace {

const QStringList allVoices{QStringLiteral("slt"),
                            QStringLiteral("rms"),
                            QStringLiteral("awb"),
                            QStringLiteral("kal16"),
                            QStringLiteral("festival:cmu_us_slt_arctic_hts"),
                            QStringLiteral("festival:kal_diphone")};

struct Options {
    QStringList voices;
    QStringList sets;
    Half half = Half::Report;
    QString folder;
    QString engine;
    std::shared_ptr<testbed::SoundServer> sound;
    bool showsErrors = false;
    /// The recordings of people to use instead of the sets.
    std::vector<PersonRecording> people;
    QString transcripts;
};

struct Score {
    int words = 0;
    int errors = 0;
    int hits = 0;
    int chances = 0;
    int falseCommands = 0;
    /// From the last sound to the text, in milliseconds.
    std::vector<double> finishing;
    double spokenSeconds = 0;
};

int commandsIn(const QString &text)
{
    static const auto phrases = commandPhrases();
    const auto words = comparableWords(text);
    int count = 0;
    for (const auto &phrase : phrases) {
        count += occurrences(words, phrase.split(QLatin1Char(' ')));
    }
    return count;
}

void count(Score &score, const Utterance &utterance, const QString &heard)
{
    const auto expected = comparableWords(utterance.text);
    score.words += static_cast<int>(expected.size());
    score.errors += wordErrors(expected, comparableWords(heard));
    const int spokenCommands = commandsIn(utterance.text);
    score.chances += spokenCommands > 0 || !utterance.keyword.isEmpty() ? 1 : 0;
    if (!utterance.keyword.isEmpty()) {
        score.hits += heard.contains(utterance.keyword) ? 1 : 0;
    } else if (spokenCommands > 0) {
        score.hits += commandsIn(heard) == spokenCommands ? 1 : 0;
    } else {
        score.falseCommands += commandsIn(heard);
    }
}

/// Every session starts with an unknown microphone.
Score run(const std::vector<Session> &sessions, const Options &options)
{
    Score score;
    for (const auto &session : sessions) {
        ListenerOptions listening{options.engine, {}, options.sound};
        for (const auto &utterance : session.utterances) {
            if (!utterance.keyword.isEmpty() && !listening.words.contains(utterance.keyword)) {
                listening.words.append(utterance.keyword);
            }
        }
        Listener listener(listening);
        for (const auto &utterance : session.utterances) {
            const FileTranscript transcript = listener.hear(utterance.file);
            const QString heard = transcript.text;
            const Score before = score;
            score.finishing.push_back(std::chrono::duration<double, std::milli>(transcript.finishing).count());
            score.spokenSeconds += std::chrono::duration<double>(transcript.length).count();
            count(score, utterance, heard);
            if (options.showsErrors && (score.errors > before.errors || score.falseCommands > before.falseCommands)) {
                std::printf("    %s\n      said:  %s\n      heard: %s\n", qUtf8Printable(session.speaker),
                            qUtf8Printable(utterance.text), qUtf8Printable(heard));
            }
        }
    }
    return score;
}

double cpuSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// The peak memory use of this process.
QString memoryUsed()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QFile::ReadOnly)) {
        for (const auto &line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:")) {
                return QString::fromLatin1(line.mid(6).trimmed());
            }
        }
    }
    return QStringLiteral("unknown");
}

void report(const QString &name, const std::vector<Session> &sessions, const Options &options)
{
    const double before = cpuSeconds();
    const Score score = run(sessions, options);
    std::printf("%-28s %6d words  %5.1f %% errors", qUtf8Printable(name), score.words,
                100.0 * score.errors / std::max(score.words, 1));
    if (score.chances > 0) {
        std::printf("  %d of %d targets correct", score.hits, score.chances);
    }
    std::printf("  %d false commands  end %.0f ms, p95 %.0f ms  %.2f of a core\n", score.falseCommands,
                percentile(score.finishing, 0.5), percentile(score.finishing, 0.95),
                (cpuSeconds() - before) / std::max(score.spokenSeconds, 1.0));
    std::fflush(stdout);
}

void reportWordless(const Options &options)
{
    for (const auto kind : {Wordless::Silence, Wordless::Noise, Wordless::Music}) {
        const QString file = wordless(kind, options.folder);
        const std::vector<Session> sessions{{file, {{file, {}, {}}}}};
        const Score score = run(sessions, options);
        std::printf("%-28s %d words without speech\n", qUtf8Printable(file.section(QLatin1Char('/'), -1)),
                    score.errors);
    }
}

/// How long finishing takes after a recording of so many seconds that ends in the middle of speech, without a pause
/// that would have settled anything. Accuracy is not counted here.
void reportLengths(const Options &options)
{
    for (const int seconds : {3, 10, 30}) {
        std::vector<Session> sessions;
        for (const auto &session : spoken(QStringLiteral("sentences"), options.voices, Half::Both, options.folder)) {
            constexpr std::size_t rounds = 4;
            Session joinedSession{session.speaker, {}};
            for (std::size_t round = 0; round < rounds; ++round) {
                QStringList files;
                for (std::size_t index = round * 10; index < session.utterances.size(); ++index) {
                    files.append(session.utterances[index].file);
                }
                const QString name = QStringLiteral("joined-%1-%2").arg(session.speaker).arg(round);
                joinedSession.utterances.push_back({joined(files, seconds, name, options.folder), {}, {}});
            }
            sessions.push_back(joinedSession);
        }
        const Score score = run(sessions, options);
        std::printf("%-28s end %.0f ms, p95 %.0f ms\n", qUtf8Printable(QStringLiteral("%1 s of speech").arg(seconds)),
                    percentile(score.finishing, 0.5), percentile(score.finishing, 0.95));
        std::fflush(stdout);
    }
}

void runSets(const Options &options)
{
    const auto has = [&options](const char *set) { return options.sets.contains(QLatin1String(set)); };
    const auto people = [&options] { return recorded(options.half, options.folder); };
    const auto noisy = [&options](std::vector<Session> sessions, int decibels) {
        return changed(std::move(sessions),
                       [&](const QString &file) { return withNoise(file, decibels, options.folder); });
    };
    const auto softer = [&options](std::vector<Session> sessions) {
        constexpr int gain = -20;
        return changed(std::move(sessions), [&](const QString &file) { return withGain(file, gain, options.folder); });
    };
    for (const char *list : {"sentences", "commands", "lists", "plain", "personal"}) {
        if (has(list)) {
            report(QString::fromLatin1(list),
                   spoken(QString::fromLatin1(list), options.voices, options.half, options.folder), options);
        }
    }
    if (has("recorded")) {
        report(QStringLiteral("recorded"), people(), options);
    }
    if (has("changed")) {
        const auto sentences = spoken(QStringLiteral("sentences"), options.voices, options.half, options.folder);
        report(QStringLiteral("sentences, noise 25 dB"), noisy(sentences, 25), options);
        report(QStringLiteral("sentences, noise 15 dB"), noisy(sentences, 15), options);
        report(QStringLiteral("sentences, 20 dB softer"), softer(sentences), options);
        report(QStringLiteral("recorded, noise 25 dB"), noisy(people(), 25), options);
        report(QStringLiteral("recorded, noise 15 dB"), noisy(people(), 15), options);
        report(QStringLiteral("recorded, 20 dB softer"), softer(people()), options);
    }
    if (has("lengths")) {
        reportLengths(options);
    }
    if (has("wordless")) {
        reportWordless(options);
    }
}

/// What a new user's dictionary contains.
QStringList firstWords()
{
    return {QStringLiteral("Talmo"), QStringLiteral("Terraform"), QStringLiteral("CloudFormation"),
            QStringLiteral("Kubernetes")};
}

std::shared_ptr<testbed::SoundServer> soundRig()
{
    static const QTemporaryDir folder;
    auto environment = QProcessEnvironment::systemEnvironment();
    return std::make_shared<testbed::SoundServer>(folder.path(), environment);
}

Options parse(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption voices(QStringLiteral("voices"), QStringLiteral("Use only these voices."),
                                    QStringLiteral("LIST"), allVoices.join(QLatin1Char(',')));
    const QCommandLineOption sets(
        QStringLiteral("sets"), QStringLiteral("Run only these sets."), QStringLiteral("LIST"),
        QStringLiteral("sentences,recorded,changed,commands,lists,plain,personal,lengths,wordless"));
    const QCommandLineOption half(QStringLiteral("half"),
                                  QStringLiteral("The half of the sentences to use: tuning, report or both."),
                                  QStringLiteral("HALF"), QStringLiteral("report"));
    const QCommandLineOption folder(QStringLiteral("folder"), QStringLiteral("The folder to keep the sound files in."),
                                    QStringLiteral("FOLDER"), QStringLiteral("build/accuracy"));
    const QCommandLineOption errors(QStringLiteral("errors"), QStringLiteral("Show misrecognised sentences."));
    const QCommandLineOption engine(QStringLiteral("engine"),
                                    QStringLiteral("The recogniser: embedded, or the name of an installed model."),
                                    QStringLiteral("NAME"), EngineRegistry::embeddedChoice);
    const QCommandLineOption fromFile(QStringLiteral("file"),
                                      QStringLiteral("Read the sound files instead of playing them, which is faster."));
    const QCommandLineOption people(
        QStringLiteral("people"),
        QStringLiteral("Use recordings of people, beside stock PocketSphinx, instead of the sets. ") +
            QString::fromLatin1(peopleFormat),
        QStringLiteral("PATH"));
    const QCommandLineOption sample(QStringLiteral("sample"),
                                    QStringLiteral("Use only so many of them, always the same."),
                                    QStringLiteral("COUNT"));
    const QCommandLineOption transcripts(QStringLiteral("transcripts"),
                                         QStringLiteral("Write what was recognised in them into this file."),
                                         QStringLiteral("FILE"));
    parser.addOptions({voices, sets, half, folder, errors, engine, fromFile, people, sample, transcripts});
    parser.process(application);
    Options options;
    options.voices = parser.value(voices).split(QLatin1Char(','));
    options.sets = parser.value(sets).split(QLatin1Char(','));
    const QString which = parser.value(half);
    options.half = which == QLatin1String("tuning") ? Half::Tuning
                   : which == QLatin1String("both") ? Half::Both
                                                    : Half::Report;
    options.folder = parser.value(folder);
    options.showsErrors = parser.isSet(errors);
    options.engine = parser.value(engine);
    if (parser.isSet(people)) {
        options.people = accuracy::people(parser.value(people));
        options.transcripts = parser.value(transcripts);
        if (parser.isSet(sample)) {
            options.people = sampleOf(options.people, parser.value(sample).toInt());
        }
    }
    options.sound = parser.isSet(fromFile) || parser.isSet(people) ? nullptr : soundRig();
    return options;
}

} // namespace

void run(const Options &options)
{
    if (options.people.empty()) {
        runSets(options);
    } else {
        reportPeople({options.people, options.engine, firstWords(), options.showsErrors, options.transcripts});
    }
}

} // namespace talmo::accuracy

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    try {
        talmo::accuracy::run(talmo::accuracy::parse(application));
        std::printf("peak memory: %s\n", qUtf8Printable(talmo::accuracy::memoryUsed()));
        return EXIT_SUCCESS;
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
}
