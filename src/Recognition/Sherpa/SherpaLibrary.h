#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <span>

namespace talmo {

/// A neural model on disk, described as the library needs it.
struct SherpaModel {
    enum class Kind { Transducer, ZipformerCtc, NemoCtc };

    QString folder;
    Kind kind = Kind::Transducer;
    /// File names within the folder; empty if the kind does not need them.
    QString encoder;
    QString decoder;
    QString joiner;
    QString model;
    QString tokens;
    /// The languages it recognises, such as "en"; never empty.
    QStringList languages;
    /// How words are split into its tokens, "bpe" or "cjkchar", if it supports hot words; else empty.
    QString hotWordUnit;

    /// Examines the files in the folder as far as possible without loading them, because the library aborts on some
    /// invalid models. Throws Error.
    static SherpaModel examine(const QString &folder);
    /// Whether all its files still exist.
    bool isComplete() const;
};

/// The library of the neural engine, which is optional: it is located and its version checked at run time. Not
/// thread-safe.
class SherpaLibrary {
public:
    /// The oldest version with the structures declared here.
    static constexpr int oldestVersion[] = {1, 12, 13};
    /// The first version whose structures are not known.
    static constexpr int firstUnknownVersion[] = {2, 0, 0};

    class Recogniser;
    class Stream;

    /// `path`: the file, or empty to search the usual places. Throws Error with advice for the user.
    static std::shared_ptr<SherpaLibrary> open(const QString &path);
    ~SherpaLibrary();
    SherpaLibrary(const SherpaLibrary &) = delete;
    SherpaLibrary &operator=(const SherpaLibrary &) = delete;

    QString version() const;
    QString path() const { return m_path; }
    /// Throws Error with advice for the user if the library is older; accepts any if `oldest` is empty.
    void requireVersion(const QString &oldest) const;

    /// Whether the library's file exists, without loading it.
    static bool isInstalled(const QString &path);

    /// The places that are searched, in this order. A library in one of them that cannot be used is passed over if
    /// there is another one.
    static QStringList usualPlaces();
    /// The library within a folder that its maker's archive was unpacked to, or where it would be.
    static QString placeIn(const QString &folder);

    struct Functions;

private:
    explicit SherpaLibrary(void *handle, const QString &path);
    static std::shared_ptr<SherpaLibrary> openAt(const QString &place);

    void *m_handle;
    QString m_path;
    std::unique_ptr<Functions> m_functions;
};

/// A loaded model. One thread.
class SherpaLibrary::Recogniser {
public:
    /// Throws Error if the library rejects the model.
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
    /// The model's tokens are upper case, so hot words must be too.
    bool m_wantsCapitals;
};

/// One recording. The thread of its recogniser.
class SherpaLibrary::Stream {
public:
    /// `hotWords`: in lower case; ignored if the model does not support them. Throws Error.
    explicit Stream(std::shared_ptr<Recogniser> recogniser, const QStringList &hotWords = {});
    ~Stream();
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    /// Samples between -1 and 1, at 16 kHz.
    void accept(std::span<const float> samples);
    /// Call after the last samples: recognises what the model has held back.
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
