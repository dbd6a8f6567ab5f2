#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo {

struct SherpaFunctions;

/// The library of the neural engine, which is optional: it is located and its version checked at run time. Not
/// thread-safe.
class SherpaLibrary {
public:
    /// The oldest version with the structures declared here.
    static constexpr int oldestVersion[] = {1, 12, 13};
    /// The first version whose structures are not known.
    static constexpr int firstUnknownVersion[] = {2, 0, 0};

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

    /// The places that are searched, in this order. An unusable library in one of them is skipped if there is another
    /// one.
    static QStringList usualPlaces();
    /// The library within a folder that its maker's archive was unpacked to, or where it would be.
    static QString placeIn(const QString &folder);

    const SherpaFunctions &functions() const { return *m_functions; }

private:
    explicit SherpaLibrary(void *handle, const QString &path);
    static std::shared_ptr<SherpaLibrary> openAt(const QString &place);

    void *m_handle;
    QString m_path;
    std::unique_ptr<SherpaFunctions> m_functions;
};

} // namespace talmo
