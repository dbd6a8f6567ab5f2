#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>
#include <vector>

class QJsonValue;

namespace talmo {

/// A downloadable speech model, or a component that an engine needs besides its models.
struct ModelEntry {
    /// Also the name of its folder.
    QString id;
    QString title;
    /// The engine that loads it, such as "sherpa-onnx".
    QString engine;
    /// What the engine must know about the model and cannot detect; may be empty. For a component: what it is.
    QString kind;
    /// "bpe" or "cjkchar" if the model supports hot words.
    QString hotWords;
    /// Language codes such as "en"; empty only for a component.
    QStringList languages;
    /// The address of an archive, or of a single file.
    QUrl address;
    /// Size of the archive in bytes; nullopt if not on record.
    std::optional<qint64> size;
    /// Approximate size for display, if `size` is unknown.
    std::optional<int> approximateMegabytes;
    /// Checksum of the archive in lower-case hexadecimal digits; empty if not on record.
    QByteArray sha256;
    QString licence;
    QUrl licenceAddress;
    /// The model's features, in a sentence.
    QString gives;
    bool hasPunctuation = false;
    /// The oldest version of the engine's library that is known to work with the model; empty if any does.
    QString minLibrary;
    /// With this many processors, most machines recognise faster than real time. Of two models of a language, the one
    /// that needs more is the more accurate.
    int cores = 1;
    /// IDs of the components that it needs besides the engine's library.
    QStringList needs;
    /// Of a library, such as "1.13.8".
    QString version;
    /// Whether it may be recommended, and installed unasked.
    bool isOffered = true;

    static const QString libraryKind;
    bool isLibrary() const { return kind == libraryKind; }
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

/// The available models: of each language, the one to begin with first.
class ModelCatalogue {
public:
    /// Components for another kind of processor are left out. Throws Error, naming the entry, unless the catalogue is
    /// complete and valid.
    static ModelCatalogue parse(const QByteArray &json);
    /// The built-in catalogue, preceded by the entries of the user's own file, which also replace built-in ones of the
    /// same ID. An unusable file is logged and ignored.
    static ModelCatalogue withUsersFile(const QString &path);
    /// The user's own catalogue file.
    static QString usersPath();

    /// Decides which models are offered.
    void setOffered(const std::function<bool(const ModelEntry &)> &isOffered);

    const std::vector<ModelEntry> &entries() const { return m_entries; }
    const ModelEntry *find(const QString &id) const;
    const std::vector<ModelEntry> &components() const { return m_components; }
    const ModelEntry *findComponent(const QString &id) const;
    /// The library of an engine, for this kind of processor; null if it cannot be downloaded.
    const ModelEntry *libraryOf(const QString &engine) const;

    /// The model to begin with in a locale's language: one that any machine can run, or else the smallest. Null if
    /// there is none.
    const ModelEntry *bestFor(const QString &locale) const;
    /// The best of the language's models that need fewer processors; null if there is none.
    const ModelEntry *nextSmaller(const ModelEntry &entry, const QString &locale) const;
    /// The most accurate model for that many processors, if it is better than all those installed; null if none is.
    const ModelEntry *betterThan(const QStringList &installed, const QString &locale, int processors) const;
    /// Position in the order of preference among installed models: the user's own entries first, then the more accurate
    /// ones. As many as there are entries if it is unlisted.
    std::size_t rank(const QString &id) const;

private:
    void add(const QJsonValue &list, bool areComponents);
    /// The first of those in the order of preference; null if there is none.
    const ModelEntry *preferred(const std::function<bool(const ModelEntry &)> &suits) const;

    std::vector<ModelEntry> m_entries;
    std::vector<ModelEntry> m_components;
    /// How many of the entries are the user's own.
    std::size_t m_ownEntries = 0;
};

} // namespace talmo
