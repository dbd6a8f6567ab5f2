#include "Recognition/Sherpa/SherpaLibrary.h"

#include "Base/Error.h"
#include "Recognition/Sherpa/SherpaFunctions.h"

#include <QFile>
#include <QStandardPaths>
#include <QVersionNumber>

#include <algorithm>
#include <dlfcn.h>

namespace talmo {

namespace {

constexpr char libraryName[] = "libsherpa-onnx-c-api.so";

} // namespace

QStringList SherpaLibrary::usualPlaces()
{
    const QString name = QString::fromLatin1(libraryName);
    QStringList places;
    for (const auto &folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        places.append(folder + QStringLiteral("/talmo/engines/") + name);
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
    for (const auto &place : places) {
        if (place.contains(QLatin1Char('/')) && !QFile::exists(place)) {
            continue;
        }
        // NODELETE, because exceptions thrown by the library are destroyed by its own code, possibly after its last use
        // here. NOW, because an unresolved symbol would otherwise end the process when it is first called.
        void *handle = dlopen(QFile::encodeName(place).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
        if (handle != nullptr) {
            return std::shared_ptr<SherpaLibrary>(new SherpaLibrary(handle, place));
        }
        if (place.contains(QLatin1Char('/'))) {
            throw Error(QStringLiteral("The neural recogniser's library cannot be loaded: %1")
                            .arg(QString::fromLocal8Bit(dlerror())));
        }
    }
    throw Error(QStringLiteral("The neural recogniser's library is not installed; it was looked for in %1.")
                    .arg(places.join(QStringLiteral(", "))));
}

SherpaLibrary::SherpaLibrary(void *handle, const QString &path)
    : m_handle(handle),
      m_path(path),
      m_functions(std::make_unique<SherpaFunctions>())
{
    try {
        SherpaFunctions::resolve(handle, "SherpaOnnxGetVersionStr", m_functions->version);
        const auto oldest = QVersionNumber(oldestVersion[0], oldestVersion[1], oldestVersion[2]);
        if (QVersionNumber::fromString(version()) < oldest) {
            throw Error(QStringLiteral("The neural recogniser's library is version %1; Talmo needs %2 or later.")
                            .arg(version(), oldest.toString()));
        }
        m_functions->resolveAll(handle);
    } catch (...) {
        dlclose(m_handle);
        throw;
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
