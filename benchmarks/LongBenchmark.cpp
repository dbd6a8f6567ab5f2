#include "Benchmarks.h"
#include "EmbeddedRecogniser.h"
#include "SpokenText.h"
#include "ThisProcess.h"

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

namespace talmo::benchmarks {

namespace {

const QString sentence = QStringLiteral("thank you very much we will meet again on monday ");
/// Spoken in half a minute or so; with the pauses between the sentences of somebody who dictates a letter.
constexpr int sentencesPerPiece = 8;

/// A file of at least so many minutes, made of the same piece again and again. Returns its path.
QString speakFor(int minutes, const QString &folder)
{
    constexpr int headerSize = 44;
    constexpr int bytesPerMinute = 60 * 16000 * 2;
    QFile spoken(testbed::speak(sentence.repeated(sentencesPerPiece), folder));
    if (!spoken.open(QFile::ReadOnly)) {
        return {};
    }
    const QByteArray header = spoken.read(headerSize);
    const QByteArray samples = spoken.readAll();
    const qint64 count = 1 + qint64(minutes) * bytesPerMinute / samples.size();
    QFile file(folder + QStringLiteral("/long.wav"));
    if (!file.open(QFile::WriteOnly)) {
        return {};
    }
    const auto number = [](qint64 value) {
        QByteArray bytes;
        QDataStream stream(&bytes, QDataStream::WriteOnly);
        stream.setByteOrder(QDataStream::LittleEndian);
        stream << static_cast<quint32>(value);
        return bytes;
    };
    constexpr int riffSizeAt = 4;
    constexpr int dataSizeAt = 40;
    const qint64 size = count * samples.size();
    QByteArray longHeader = header;
    longHeader.replace(riffSizeAt, 4, number(size + headerSize - 8)).replace(dataSizeAt, 4, number(size));
    file.write(longHeader);
    for (qint64 piece = 0; piece < count; ++piece) {
        file.write(samples);
    }
    return file.fileName();
}

/// How the process grows, and what it spends, from one live text to the next.
class Progress {
public:
    explicit Progress(int minutes)
        : m_words(minutes)
    {
    }

    void operator()(const QString &text)
    {
        const double share = static_cast<double>(text.size()) / (m_words * charactersPerMinute);
        m_last = {ThisProcess::residentKilobytes(), ThisProcess::processorSeconds(), text.size()};
        if (m_early.characters == 0 && share >= earlyShare) {
            m_early = m_last;
        }
    }

    void addTo(Figures &figures, const QString &name) const
    {
        const double thousands = static_cast<double>(m_last.characters - m_early.characters) / 1000;
        if (m_early.characters == 0 || thousands <= 0) {
            return;
        }
        figures.row(name + QStringLiteral("growth per 1,000 characters, after a tenth"), QStringLiteral("KB"))
            .add((m_last.kilobytes - m_early.kilobytes) / thousands);
        const double earlyCost = m_early.seconds / static_cast<double>(m_early.characters);
        const double laterCost = (m_last.seconds - m_early.seconds) / (thousands * 1000);
        figures.row(name + QStringLiteral("processor time per character, later over first tenth"), QStringLiteral("x"))
            .add(laterCost / earlyCost);
    }

private:
    static constexpr double charactersPerMinute = 900;
    static constexpr double earlyShare = 0.1;
    struct State {
        double kilobytes = 0;
        double seconds = 0;
        qsizetype characters = 0;
    };
    int m_words;
    State m_early;
    State m_last;
};

} // namespace

void measureHour(Figures &figures, int minutes)
{
    EmbeddedRecogniser recogniser;
    const QTemporaryDir folder;
    const QString shortRow = QStringLiteral("hands-free: last audio -> final text, 10 s");
    const QString shortFile = testbed::speak(sentence.repeated(3), folder.path());
    constexpr int shortRounds = 5;
    for (int round = 0; round < shortRounds; ++round) {
        figures.row(shortRow).add(recogniser.finishing(shortFile));
    }
    const QString name = QStringLiteral("hands-free for %1 min: ").arg(minutes);
    const auto progress = std::make_shared<Progress>(minutes);
    const double before = ThisProcess::processorSeconds();
    const double end =
        recogniser.finishing(speakFor(minutes, folder.path()), [progress](const QString &text) { (*progress)(text); });
    figures.row(name + QStringLiteral("last audio -> final text"), QStringLiteral("ms"), shortRow).add(end);
    figures.row(name + QStringLiteral("processor time per minute"), QStringLiteral("s"))
        .add((ThisProcess::processorSeconds() - before) / minutes);
    progress->addTo(figures, name);
}

} // namespace talmo::benchmarks
