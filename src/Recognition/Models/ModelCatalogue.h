#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <vector>

namespace talmo {

/// A speech model that can be had.
struct ModelEntry {
    /// Also the name of its folder.
    QString id;
    QString title;
    /// The recogniser that it is for, such as "sherpa-onnx".
    QString engine;
    /// What that recogniser must know of it and cannot see; may be empty.
    QString kind;
    /// "bpe" or "cjkchar" where the model can be told words to listen for.
    QString hotWords;
    /// Such as "en"; never empty.
    QStringList languages;
    /// An archive.
    QUrl address;
    /// Of the archive, in bytes; none where nobody has measured it.
    std::optional<qint64> size;
    /// For people, where the size is not known to the byte.
    std::optional<int> roughMegabytes;
    /// Of the archive, in lower-case hexadecimal digits; empty where nobody has measured it.
    QByteArray sha256;
    QString licence;
    QUrl licenceAddress;
    /// What it gives, in a sentence.
    QString gives;

    bool speaks(const QString &locale) const;
    /// "zipformer-en (Zipformer 2023-06-26, en)"
    QString name() const;
};

/// The language of a locale: "en" of "en_GB.UTF-8".
QString languageOf(const QString &locale);

/// Whether models may be fetched from there: HTTPS, or plain HTTP from this very machine.
bool isPermittedAddress(const QUrl &address);
/// Whether a server may lead from one address to another: never from HTTPS to HTTP, not even on this machine.
bool isPermittedRedirect(const QUrl &from, const QUrl &to);

/// The models that can be had, the better ones of a language first.
class ModelCatalogue {
public:
    /// Throws Error, naming the entry, for anything but a whole and sound catalogue.
    static ModelCatalogue parse(const QByteArray &json);
    /// What comes with Talmo, and before it what the user's own file lists, which also replaces entries of the same
    /// name. A file that will not do is said in the log and left out.
    static ModelCatalogue withUsersFile(const QString &path);
    /// Where the user may list more.
    static QString usersPath();

    const std::vector<ModelEntry> &entries() const { return m_entries; }
    const ModelEntry *find(const QString &id) const;
    /// The first that speaks a locale's language.
    const ModelEntry *bestFor(const QString &locale) const;
    /// The place among the others, from 0; behind them all for what is not listed.
    std::size_t rank(const QString &id) const;

private:
    std::vector<ModelEntry> m_entries;
};

} // namespace talmo
