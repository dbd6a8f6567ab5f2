#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <span>

namespace talmo {

/// A neural recogniser's model on disk, as the library wants to be told of it.
struct SherpaModel {
    enum class Kind { Transducer, ZipformerCtc, NemoCtc };

    QString folder;
    Kind kind = Kind::Transducer;
    /// File names within the folder; those that the kind does not need are empty.
    QString encoder;
    QString decoder;
    QString joiner;
    QString model;
    QString tokens;
    /// What it recognises, such as "en"; never empty.
    QStringList languages;
    /// How its tokens are made of words, "bpe" or "cjkchar", where it can be told words to listen for; else empty.
    QString hotWordUnit;

    /// Looks what lies in the folder, and checks as far as can be without loading: the library ends the process over
    /// some of what can be wrong. Throws Error.
    static SherpaModel examine(const QString &folder);
    /// Whether all its files are still there.
    bool isComplete() const;
};

/// The library of the neural recogniser, which the user may have installed: found and asked for its version when the
/// program runs. Not thread-safe.
class SherpaLibrary {
public:
    /// The oldest version whose structures are those known here.
    static constexpr int oldestVersion[] = {1, 12, 13};

    class Recogniser;
    class Stream;

    /// `path`: the file, or empty to look in the usual places. Throws Error, with what to do about it.
    static std::shared_ptr<SherpaLibrary> open(const QString &path);
    ~SherpaLibrary();
    SherpaLibrary(const SherpaLibrary &) = delete;
    SherpaLibrary &operator=(const SherpaLibrary &) = delete;

    QString version() const;
    QString path() const { return m_path; }

    /// Whether there is such a file, without loading it.
    static bool isInstalled(const QString &path);

    /// Where it is looked for.
    static QStringList usualPlaces();

    struct Functions;

private:
    explicit SherpaLibrary(void *handle, const QString &path);

    void *m_handle;
    QString m_path;
    std::unique_ptr<Functions> m_functions;
};

/// A loaded model. One thread.
class SherpaLibrary::Recogniser {
public:
    /// Throws Error when the library refuses the model.
    static std::shared_ptr<Recogniser> load(std::shared_ptr<SherpaLibrary> library, const SherpaModel &model);
    ~Recogniser();
    Recogniser(const Recogniser &) = delete;
    Recogniser &operator=(const Recogniser &) = delete;

private:
    friend class Stream;
    Recogniser(std::shared_ptr<SherpaLibrary> library, const void *handle, bool takesHotWords, bool wantsCapitals);

    std::shared_ptr<SherpaLibrary> m_library;
    const void *m_handle;
    bool m_takesHotWords;
    /// Its tokens are capitals, so words to be listened for must be too.
    bool m_wantsCapitals;
};

/// One recording. Its recogniser's thread.
class SherpaLibrary::Stream {
public:
    /// `hotWords`: to be listened for, in small letters; without effect where the model cannot. Throws Error.
    explicit Stream(std::shared_ptr<Recogniser> recogniser, const QStringList &hotWords = {});
    ~Stream();
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    /// Samples between -1 and 1, 16,000 a second.
    void accept(std::span<const float> samples);
    /// No more will come: what is held back is recognised as well.
    void inputFinished();
    /// The text since the last reset.
    QString text() const;
    bool isEndpoint() const;
    void reset();

private:
    static const void *create(const Recogniser &recogniser, const QStringList &hotWords);
    void decode();

    std::shared_ptr<Recogniser> m_recogniser;
    const void *m_handle;
};

} // namespace talmo
