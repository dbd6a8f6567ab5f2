#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <vector>

namespace talmo {

/// A downloadable speech model.
struct ModelEntry {
    /// Also the name of its folder.
    QString id;
    QString title;
    /// The engine that loads it, such as "sherpa-onnx".
    QString engine;
    /// What the engine must know about the model and cannot detect; may be empty.
    QString kind;
    /// "bpe" or "cjkchar" if the model supports hot words.
    QString hotWords;
    /// Language codes such as "en"; never empty.
    QStringList languages;
    /// The address of an archive.
    QUrl address;
    /// Size of the archive in bytes; nullopt if not on record.
    std::optional<qint64> size;
    /// Approximate size for display, if `size` is unknown.
    std::optional<int> roughMegabytes;
    /// Checksum of the archive in lower-case hexadecimal digits; empty if not on record.
    QByteArray sha256;
    QString licence;
    QUrl licenceAddress;
    /// The model's features, in a sentence.
    QString gives;

    bool speaks(const QString &locale) const;
    /// "zipformer-en (Zipformer 2023-06-26, en)"
    QString name() const;
};

/// The language of a locale: "en" of "en_GB.UTF-8".
QString languageOf(const QString &locale);

/// Whether models may be downloaded from there: HTTPS, or plain HTTP from this machine.
bool isPermittedAddress(const QUrl &address);
/// Whether a redirect may be followed: never from HTTPS to HTTP, not even on this machine.
bool isPermittedRedirect(const QUrl &from, const QUrl &to);

/// The available models, the better ones of each language first.
class ModelCatalogue {
public:
    /// Throws Error, naming the entry, unless the catalogue is complete and valid.
    static ModelCatalogue parse(const QByteArray &json);
    /// The built-in catalogue, preceded by the entries of the user's own file, which also replace built-in ones of the
    /// same ID. An unusable file is logged and ignored.
    static ModelCatalogue withUsersFile(const QString &path);
    /// The user's own catalogue file.
    static QString usersPath();

    const std::vector<ModelEntry> &entries() const { return m_entries; }
    const ModelEntry *find(const QString &id) const;
    /// The first model for a locale's language; null if there is none.
    const ModelEntry *bestFor(const QString &locale) const;
    /// Index in the catalogue, or entries().size() if unlisted.
    std::size_t rank(const QString &id) const;

private:
    std::vector<ModelEntry> m_entries;
};

} // namespace talmo
