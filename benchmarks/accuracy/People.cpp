#include "accuracy/People.h"

#include "Base/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <map>
#include <random>

namespace talmo::accuracy {

const char *const peopleFormat =
    "A table NAME.tsv, or a folder with such tables. The first line names the columns, separated by tabs: at least "
    "file (a sound file in the folder NAME beside the table), speaker, kind and transcript.";

namespace {

std::vector<PersonRecording> listedIn(const QString &table)
{
    QFile file(table);
    if (!file.open(QFile::ReadOnly)) {
        throw Error(QStringLiteral("%1: %2").arg(table, file.errorString()));
    }
    const QFileInfo info(table);
    const QDir sounds(info.absolutePath() + QLatin1Char('/') + info.completeBaseName());
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QStringList columns = lines.value(0).split(QLatin1Char('\t'));
    for (const auto *needed : {"file", "speaker", "kind", "transcript"}) {
        if (!columns.contains(QLatin1String(needed))) {
            throw Error(QStringLiteral("%1 has no column “%2”.").arg(table, QLatin1String(needed)));
        }
    }
    std::vector<PersonRecording> recordings;
    for (const auto &line : lines.mid(1)) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        const auto field = [&](const char *name) { return fields.value(columns.indexOf(QLatin1String(name))); };
        recordings.push_back({sounds.filePath(field("file")), field("speaker"), field("kind"), field("transcript")});
    }
    return recordings;
}

} // namespace

std::vector<PersonRecording> people(const QString &path)
{
    if (!QFileInfo(path).isDir()) {
        return listedIn(path);
    }
    std::vector<PersonRecording> all;
    const QDir folder(path);
    for (const auto &table : folder.entryList({QStringLiteral("*.tsv")}, QDir::Files, QDir::Name)) {
        const auto some = listedIn(folder.filePath(table));
        all.insert(all.end(), some.begin(), some.end());
    }
    if (all.empty()) {
        throw Error(QStringLiteral("There is no table of recordings in %1.").arg(path));
    }
    return all;
}

/// Takes one recording of each speaker after another.
std::vector<PersonRecording> sampleOf(const std::vector<PersonRecording> &recordings, int count)
{
    std::mt19937 generator(1);
    // Sorting by drawn numbers gives the same order with every library, unlike std::shuffle.
    std::map<QString, std::map<std::uint32_t, std::size_t>> ofSpeaker;
    for (std::size_t index = 0; index < recordings.size(); ++index) {
        ofSpeaker[recordings[index].speaker].emplace(static_cast<std::uint32_t>(generator()), index);
    }
    std::map<std::pair<std::size_t, std::uint32_t>, std::size_t> order;
    for (const auto &[speaker, own] : ofSpeaker) {
        const auto place = static_cast<std::uint32_t>(generator());
        std::size_t round = 0;
        for (const auto &[drawn, index] : own) {
            order.emplace(std::pair(round++, place), index);
        }
    }
    std::vector<PersonRecording> chosen;
    for (const auto &[place, index] : order) {
        if (static_cast<int>(chosen.size()) < count) {
            chosen.push_back(recordings[index]);
        }
    }
    return chosen;
}

} // namespace talmo::accuracy
