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

    /// `path`: the file, or empty to search the usual places. Throws Error with advice for the user.
    static std::shared_ptr<SherpaLibrary> open(const QString &path);
    ~SherpaLibrary();
    SherpaLibrary(const SherpaLibrary &) = delete;
    SherpaLibrary &operator=(const SherpaLibrary &) = delete;

    QString version() const;
    QString path() const { return m_path; }

    /// Whether the library's file exists, without loading it.
    static bool isInstalled(const QString &path);

    /// The places that are searched.
    static QStringList usualPlaces();

    const SherpaFunctions &functions() const { return *m_functions; }

private:
    explicit SherpaLibrary(void *handle, const QString &path);

    void *m_handle;
    QString m_path;
    std::unique_ptr<SherpaFunctions> m_functions;
};

} // namespace talmo
