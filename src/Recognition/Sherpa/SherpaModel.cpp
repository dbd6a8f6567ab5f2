#include "Recognition/Sherpa/SherpaModel.h"

#include "Base/Error.h"
#include "Recognition/Sherpa/OnnxFile.h"
#include "Recognition/Sherpa/SherpaTokens.h"
#include "Recognition/UnusableModel.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace talmo {

namespace {

using Kind = SherpaModel::Kind;

constexpr qint64 smallestModel = 128;

/// Which of two variants of a file is used if both exist. The int8 ones are faster and almost as accurate.
enum class Precision { Int8First, FullFirst };

QString find(const QDir &folder, const QString &part, Precision precision = Precision::Int8First)
{
    QStringList patterns{QStringLiteral("*%1*.int8.onnx"), QStringLiteral("*%1*.onnx"), QStringLiteral("*%1*.ort")};
    QStringList found;
    for (const auto &pattern : patterns) {
        found += folder.entryList({pattern.arg(part)}, QDir::Files, QDir::Name);
    }
    const auto isFull = [](const QString &name) { return !name.contains(QStringLiteral("int8")); };
    const auto full = std::find_if(found.begin(), found.end(), isFull);
    return precision == Precision::FullFirst && full != found.end() ? *full : found.value(0);
}

bool looksLikeModel(const QString &name, const QByteArray &beginning)
{
    return name.endsWith(QStringLiteral(".ort")) ? beginning.mid(4, 4) == "ORTM"
                                                 : beginning.startsWith(0x08); // The first field, the format's version.
}

void requireModel(const QDir &folder, const QString &name, const QString &what)
{
    QFile file(folder.filePath(name));
    if (name.isEmpty() || !file.exists()) {
        throw UnusableModel(QStringLiteral("There is no %1 in %2.").arg(what, folder.path()));
    }
    constexpr qint64 signature = 8;
    const bool isReadable = file.open(QFile::ReadOnly);
    if (!isReadable || file.size() < smallestModel || !looksLikeModel(name, file.read(signature))) {
        throw UnusableModel(QStringLiteral("%1 is no model, or is damaged.").arg(file.fileName()));
    }
}

/// The library aborts on a model that lacks the metadata it reads, such as one of another kind.
void requireMetadata(const QDir &folder, const QString &name, const QByteArrayList &keys)
{
    const OnnxFile file = OnnxFile::read(folder.filePath(name));
    for (const auto &key : keys) {
        if (!file.metadata.contains(key)) {
            throw UnusableModel(QStringLiteral("%1 is a model of another kind: it does not say “%2”.")
                                    .arg(folder.filePath(name), QString::fromLatin1(key)));
        }
    }
}

void requireModelType(const QDir &folder, const QString &name, const QByteArrayList &types)
{
    const QByteArray type = OnnxFile::read(folder.filePath(name)).metadata.value("model_type");
    if (!types.contains(type)) {
        throw UnusableModel(
            QStringLiteral("%1 is a model of another kind: “%2”.").arg(folder.filePath(name), QString::fromUtf8(type)));
    }
}

QStringList codesIn(const QString &path)
{
    const QByteArray codes = OnnxFile::read(path).metadata.value("all_language_codes");
    return QString::fromLatin1(codes).split(QLatin1Char(','), Qt::SkipEmptyParts);
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

/// A model without a note is identified by its files, since one that was copied into place by hand has none.
Kind kindOf(const QString &name, const QDir &folder)
{
    static const QHash<QString, Kind> kinds{{QStringLiteral("zipformer-ctc"), Kind::ZipformerCtc},
                                            {QStringLiteral("offline-transducer"), Kind::OfflineTransducer},
                                            {QStringLiteral("offline-nemo-ctc"), Kind::OfflineNemoCtc},
                                            {QStringLiteral("whisper"), Kind::Whisper},
                                            {QStringLiteral("moonshine"), Kind::Moonshine},
                                            {QStringLiteral("sense-voice"), Kind::SenseVoice},
                                            {QStringLiteral("canary"), Kind::Canary}};
    const bool isInParts = !find(folder, QStringLiteral("encoder")).isEmpty();
    return kinds.value(name, isInParts ? Kind::Transducer : Kind::NemoCtc);
}

void findParts(SherpaModel &model, const QDir &folder, bool hasJoiner)
{
    // A zipformer's decoder is so small that its int8 variant only loses accuracy.
    const auto precision = model.kind == Kind::Transducer ? Precision::FullFirst : Precision::Int8First;
    model.encoder = find(folder, QStringLiteral("encoder"));
    model.decoder = find(folder, QStringLiteral("decoder"), precision);
    requireModel(folder, model.encoder, QStringLiteral("encoder"));
    requireModel(folder, model.decoder, QStringLiteral("decoder"));
    if (hasJoiner) {
        model.joiner = find(folder, QStringLiteral("joiner"));
        requireModel(folder, model.joiner, QStringLiteral("joiner"));
    }
}

void findSingle(SherpaModel &model, const QDir &folder)
{
    model.model = find(folder, QStringLiteral("model"));
    requireModel(folder, model.model, QStringLiteral("model"));
}

/// Of Moonshine's two generations the second has no preprocessor, and one decoder with and without a cache.
void findMoonshine(SherpaModel &model, const QDir &folder)
{
    const auto named = [&folder](const QString &pattern) {
        return folder.entryList({pattern}, QDir::Files, QDir::Name).value(0);
    };
    model.preprocessor = named(QStringLiteral("preprocess*.onnx"));
    if (model.preprocessor.isEmpty()) {
        model.encoder = find(folder, QStringLiteral("encoder"));
        model.decoder = find(folder, QStringLiteral("merged"));
    } else {
        model.encoder = named(QStringLiteral("encode*.onnx"));
        model.decoder = named(QStringLiteral("uncached_decode*.onnx"));
        model.cachedDecoder = named(QStringLiteral("cached_decode*.onnx"));
        requireModel(folder, model.preprocessor, QStringLiteral("preprocessor"));
        requireModel(folder, model.cachedDecoder, QStringLiteral("decoder with a cache"));
    }
    requireModel(folder, model.encoder, QStringLiteral("encoder"));
    requireModel(folder, model.decoder, QStringLiteral("decoder"));
}

void findFiles(SherpaModel &model, const QDir &folder)
{
    switch (model.kind) {
    case Kind::Transducer:
        findParts(model, folder, true);
        model.isNemo = OnnxFile::read(folder.filePath(model.decoder)).outputs.size() > 1;
        return;
    case Kind::ZipformerCtc:
    case Kind::NemoCtc:
        findSingle(model, folder);
        model.isNemo = model.kind == Kind::NemoCtc;
        return;
    case Kind::OfflineTransducer:
        findParts(model, folder, true);
        requireMetadata(folder, model.encoder,
                        {"vocab_size", "subsampling_factor", "normalize_type", "pred_rnn_layers", "pred_hidden"});
        return;
    case Kind::OfflineNemoCtc:
        findSingle(model, folder);
        requireModelType(folder, model.model, {"EncDecCTCModelBPE", "EncDecCTCModel", "EncDecHybridRNNTCTCBPEModel"});
        requireMetadata(folder, model.model, {"vocab_size", "subsampling_factor", "normalize_type"});
        return;
    case Kind::Whisper:
        findParts(model, folder, false);
        requireMetadata(folder, model.encoder,
                        {"n_mels", "n_text_layer", "n_text_ctx", "n_text_state", "n_vocab", "sot", "eot", "blank_id",
                         "translate", "transcribe", "is_multilingual", "no_timestamps", "no_speech", "sot_sequence"});
        model.toldLanguages = codesIn(folder.filePath(model.encoder));
        return;
    case Kind::Moonshine:
        findMoonshine(model, folder);
        return;
    case Kind::SenseVoice:
        findSingle(model, folder);
        requireMetadata(folder, model.model,
                        {"vocab_size", "lfr_window_size", "lfr_window_shift", "normalize_samples", "with_itn",
                         "without_itn", "neg_mean", "inv_stddev"});
        model.toldLanguages = model.languages;
        return;
    case Kind::Canary:
        findParts(model, folder, false);
        requireModelType(folder, model.encoder, {"EncDecMultiTaskModel"});
        requireMetadata(folder, model.encoder, {"vocab_size", "subsampling_factor", "normalize_type", "feat_dim"});
        model.toldLanguages = model.languages;
        return;
    }
}

/// Only these have a token for no sound.
SherpaTokens::Blank blankOf(Kind kind)
{
    const bool needsBlank = kind == Kind::Transducer || kind == Kind::ZipformerCtc || kind == Kind::NemoCtc ||
                            kind == Kind::OfflineTransducer || kind == Kind::OfflineNemoCtc;
    return needsBlank ? SherpaTokens::Blank::Needed : SherpaTokens::Blank::NotNeeded;
}

} // namespace

SherpaModel SherpaModel::examine(const QString &path)
{
    const QDir folder(path);
    if (!folder.exists()) {
        throw UnusableModel(QStringLiteral("There is no folder %1.").arg(path));
    }
    QFile notes(folder.filePath(QStringLiteral("talmo-model.json")));
    const auto note = notes.open(QFile::ReadOnly) ? QJsonDocument::fromJson(notes.readAll()).object() : QJsonObject();
    SherpaModel model;
    model.folder = folder.absolutePath();
    model.languages = languagesOf(note);
    model.hotWordUnit = note.value(QStringLiteral("hotWords")).toString();
    model.kind = kindOf(note.value(QStringLiteral("kind")).toString(), folder);
    // Whisper's are called "tiny-tokens.txt" and the like.
    model.tokens = folder.entryList({QStringLiteral("*tokens.txt")}, QDir::Files, QDir::Name)
                       .value(0, QStringLiteral("tokens.txt"));
    const auto tokens = SherpaTokens::read(folder.filePath(model.tokens), blankOf(model.kind));
    model.isAllCapitals = tokens.areAllCapitals();
    findFiles(model, folder);
    return model;
}

bool SherpaModel::isStreaming() const
{
    return kind == Kind::Transducer || kind == Kind::ZipformerCtc || kind == Kind::NemoCtc;
}

/// The library ends the process when it is given words for any other model.
bool SherpaModel::takesHotWords() const
{
    return kind == Kind::Transducer && !isNemo &&
           (hotWordUnit == QStringLiteral("bpe") || hotWordUnit == QStringLiteral("cjkchar"));
}

bool SherpaModel::isComplete() const
{
    const QDir place(folder);
    const QStringList files{encoder, decoder, joiner, model, tokens, preprocessor, cachedDecoder};
    return std::all_of(files.begin(), files.end(),
                       [&place](const QString &file) { return file.isEmpty() || place.exists(file); });
}

} // namespace talmo
