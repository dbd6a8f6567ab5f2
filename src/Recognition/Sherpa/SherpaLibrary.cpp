#include "Recognition/Sherpa/SherpaLibrary.h"

#include "Base/DetailedError.h"
#include "Base/Error.h"
#include "Base/Log.h"
#include "Recognition/Sherpa/SherpaFunctions.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QVersionNumber>

#include <algorithm>
#include <dlfcn.h>
#include <utility>

namespace talmo {

namespace {

constexpr char libraryName[] = "libsherpa-onnx-c-api.so";

/// Of a folder such as "sherpa-onnx-1.13.8".
QVersionNumber versionOf(const QString &folder)
{
    return QVersionNumber::fromString(folder.section(QLatin1Char('-'), -1));
}

QVersionNumber number(const int (&parts)[3])
{
    return {parts[0], parts[1], parts[2]};
}

/// The structures of other versions may differ, and the library does not check them.
void requireKnownVersion(const QString &version)
{
    const auto found = QVersionNumber::fromString(version);
    const auto oldest = number(SherpaLibrary::oldestVersion);
    const auto unknown = number(SherpaLibrary::firstUnknownVersion);
    if (found < oldest) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo",
                "The neural recogniser's library is too old. Install the recogniser again to get a newer one.")),
            QStringLiteral("version %1; %2 or later is needed").arg(version, oldest.toString()));
    }
    if (found >= unknown) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo",
                "The neural recogniser's library is newer than this version of Talmo knows. Update Talmo, or install "
                "the recogniser again.")),
            QStringLiteral("version %1; one before %2 is needed").arg(version, unknown.toString()));
    }
}

} // namespace

QString SherpaLibrary::placeIn(const QString &folder)
{
    const QString name = QLatin1Char('/') + QString::fromLatin1(libraryName);
    const QString direct = folder + name;
    return QFile::exists(direct) ? direct : folder + QStringLiteral("/lib") + name;
}

QStringList SherpaLibrary::usualPlaces()
{
    const QString name = QString::fromLatin1(libraryName);
    QStringList places;
    for (const auto &data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        const QDir engines(data + QStringLiteral("/talmo/engines"));
        // Downloaded libraries, the newest first.
        QStringList versions = engines.entryList({QStringLiteral("sherpa-onnx-*")}, QDir::Dirs);
        std::sort(versions.begin(), versions.end(),
                  [](const QString &left, const QString &right) { return versionOf(left) > versionOf(right); });
        for (const auto &version : versions) {
            places.append(placeIn(engines.filePath(version)));
        }
        places.append(engines.filePath(name));
    }
    places.append(QStringLiteral("/usr/local/lib/") + name);
    places.append(name); // The dynamic loader's own search path.
    return places;
}

bool SherpaLibrary::isInstalled(const QString &path)
{
    if (!path.isEmpty()) {
        return QFile::exists(path);
    }
    QStringList places = usualPlaces();
    for (const auto *folder :
         {"/usr/lib/", "/usr/lib64/", "/usr/lib/x86_64-linux-gnu/", "/usr/lib/aarch64-linux-gnu/"}) {
        places.append(QString::fromLatin1(folder) + QString::fromLatin1(libraryName));
    }
    return std::any_of(places.begin(), places.end(),
                       [](const QString &place) { return place.contains(QLatin1Char('/')) && QFile::exists(place); });
}

std::shared_ptr<SherpaLibrary> SherpaLibrary::open(const QString &path)
{
    const QStringList places = path.isEmpty() ? usualPlaces() : QStringList{path};
    std::exception_ptr unusable;
    for (const auto &place : places) {
        try {
            if (auto library = openAt(place)) {
                return library;
            }
        } catch (const Error &) {
            unusable = unusable ? unusable : std::current_exception();
        }
    }
    if (unusable) {
        std::rethrow_exception(unusable);
    }
    generalLog().info("the neural recogniser's library was looked for in %@", {places.join(QStringLiteral(", "))});
    throw Error(QStringLiteral(QT_TRANSLATE_NOOP(
        "Talmo", "The neural recogniser's library is not installed. Install the recogniser in Talmo's settings, or "
                 "with “talmoctl setup”.")));
}

/// Null if there is none. Throws Error if it cannot be used.
std::shared_ptr<SherpaLibrary> SherpaLibrary::openAt(const QString &place)
{
    const bool isFile = place.contains(QLatin1Char('/'));
    if (isFile && !QFile::exists(place)) {
        return nullptr;
    }
    // NODELETE, because exceptions thrown by the library are destroyed by its own code, possibly after its last use
    // here. NOW, because an unresolved symbol would otherwise end the process when it is first called.
    void *handle = dlopen(QFile::encodeName(place).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (handle != nullptr) {
        return std::shared_ptr<SherpaLibrary>(new SherpaLibrary(handle, place));
    }
    if (isFile) {
        generalLog().error("the neural recogniser's library cannot be loaded: %s", {QString::fromLocal8Bit(dlerror())});
        throw Error(QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "The neural recogniser's library cannot be loaded. Install the recogniser again.")));
    }
    return nullptr;
}

SherpaLibrary::SherpaLibrary(void *handle, const QString &path)
    : m_handle(handle),
      m_path(path),
      m_functions(std::make_unique<SherpaFunctions>())
{
    try {
        SherpaFunctions::resolve(handle, "SherpaOnnxGetVersionStr", m_functions->version);
        requireKnownVersion(version());
        m_functions->resolveAll(handle);
    } catch (...) {
        dlclose(m_handle);
        throw;
    }
}

void SherpaLibrary::requireVersion(const QString &oldest) const
{
    if (!oldest.isEmpty() && QVersionNumber::fromString(version()) < QVersionNumber::fromString(oldest)) {
        throw Error(QStringLiteral(QT_TRANSLATE_NOOP(
                        "Talmo", "This model needs a newer library than the installed one. Install the model again, "
                                 "and the library comes with it: ")) +
                    QStringLiteral("%1, not %2").arg(oldest, version()));
    }
}

SherpaLibrary::~SherpaLibrary()
{
    dlclose(m_handle);
}

QString SherpaLibrary::version() const
{
    return QString::fromUtf8(m_functions->version());
}

} // namespace talmo
