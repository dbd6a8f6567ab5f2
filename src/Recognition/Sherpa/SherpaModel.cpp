#include "Recognition/Sherpa/SherpaLibrary.h"

#include "Base/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace talmo {

namespace {

constexpr qint64 smallestModel = 128;
constexpr qint64 largestTokens = qint64(16) * 1024 * 1024;

/// Files such as "encoder-epoch-99.int8.onnx": int8 models are faster and almost as accurate, so they come first.
QString find(const QDir &folder, const QString &part)
{
    for (const auto &pattern : {QStringLiteral("*%1*.int8.onnx"), QStringLiteral("*%1*.onnx")}) {
        const auto found = folder.entryList({pattern.arg(part)}, QDir::Files, QDir::Name);
        if (!found.isEmpty()) {
            return found.first();
        }
    }
    return {};
}

void requireModel(const QDir &folder, const QString &name, const QString &what)
{
    QFile file(folder.filePath(name));
    if (name.isEmpty() || !file.exists()) {
        throw Error(QStringLiteral("There is no %1 in %2.").arg(what, folder.path()));
    }
    char first = 0;
    const bool isReadable = file.open(QFile::ReadOnly) && file.read(&first, 1) == 1;
    constexpr char beginningOfEveryModel = 0x08; // The tag of the first field, the format's version.
    if (!isReadable || file.size() < smallestModel || first != beginningOfEveryModel) {
        throw Error(QStringLiteral("%1 is no model, or is damaged.").arg(file.fileName()));
    }
}

/// Every line must be a token and its number: the library aborts on any other line.
void requireTokens(const QDir &folder, const QString &name)
{
    QFile file(folder.filePath(name));
    if (!file.open(QFile::ReadOnly) || file.size() == 0 || file.size() > largestTokens) {
        throw Error(QStringLiteral("%1 cannot be read.").arg(file.fileName()));
    }
    bool hasBlank = false;
    for (const auto &line : file.readAll().split('\n')) {
        const auto separator = line.lastIndexOf(' ');
        bool isNumber = false;
        line.mid(separator + 1).trimmed().toInt(&isNumber);
        const QByteArray token = line.left(separator);
        hasBlank = hasBlank || token == "<blk>" || token == "<eps>" || token == "<blank>";
        if (!line.trimmed().isEmpty() && (separator < 0 || !isNumber)) {
            throw Error(QStringLiteral("%1 is damaged: “%2”").arg(file.fileName(), QString::fromUtf8(line.left(60))));
        }
    }
    if (!hasBlank) {
        throw Error(QStringLiteral("%1 is not complete: it has no blank.").arg(file.fileName()));
    }
}

/// A model without a declared language counts as English, as most are.
QStringList languagesOf(const QJsonObject &note)
{
    QStringList languages;
    for (const auto &value : note.value(QStringLiteral("languages")).toArray()) {
        languages.append(value.toString().toLower());
    }
    if (languages.isEmpty()) {
        languages.append(note.value(QStringLiteral("language")).toString(QStringLiteral("en")).toLower());
    }
    return languages;
}

} // namespace

SherpaModel SherpaModel::examine(const QString &path)
{
    const QDir folder(path);
    if (!folder.exists()) {
        throw Error(QStringLiteral("There is no folder %1.").arg(path));
    }
    SherpaModel model;
    model.folder = folder.absolutePath();
    QFile notes(folder.filePath(QStringLiteral("talmo-model.json")));
    const auto note = notes.open(QFile::ReadOnly) ? QJsonDocument::fromJson(notes.readAll()).object() : QJsonObject();
    model.languages = languagesOf(note);
    model.hotWordUnit = note.value(QStringLiteral("hotWords")).toString();
    model.tokens = QStringLiteral("tokens.txt");
    requireTokens(folder, model.tokens);
    model.encoder = find(folder, QStringLiteral("encoder"));
    if (!model.encoder.isEmpty()) {
        model.kind = Kind::Transducer;
        model.decoder = find(folder, QStringLiteral("decoder"));
        model.joiner = find(folder, QStringLiteral("joiner"));
        requireModel(folder, model.encoder, QStringLiteral("encoder"));
        requireModel(folder, model.decoder, QStringLiteral("decoder"));
        requireModel(folder, model.joiner, QStringLiteral("joiner"));
        return model;
    }
    model.model = find(folder, QStringLiteral("model"));
    model.kind =
        note.value(QStringLiteral("kind")) == QStringLiteral("zipformer-ctc") ? Kind::ZipformerCtc : Kind::NemoCtc;
    requireModel(folder, model.model, QStringLiteral("model"));
    return model;
}

bool SherpaModel::isComplete() const
{
    const QDir place(folder);
    const QStringList files{encoder, decoder, joiner, model, tokens};
    return std::all_of(files.begin(), files.end(),
                       [&place](const QString &file) { return file.isEmpty() || place.exists(file); });
}

} // namespace talmo
