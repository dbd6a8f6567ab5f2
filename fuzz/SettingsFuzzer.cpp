// Settings files edited manually, by other programs, or damaged on disk.

#include "Fuzzing.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/SettingsFile.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

using namespace talmo;
using fuzz::require;

namespace {

QJsonObject throughJson(const QJsonObject &object)
{
    return QJsonDocument::fromJson(QJsonDocument(object).toJson()).object();
}

const QString key = QStringLiteral("talmo.textTone");
const QString words = QStringLiteral("talmo.dictionaryWords");

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    fuzz::SilentLog::install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString folder = fuzz::scratchFolder() + QStringLiteral("/settings");
    const QString path = folder + QStringLiteral("/settings.json");
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    require(QDir().mkpath(folder));
    fuzz::writeFile(path, content);

    const auto executor = SerialExecutor::onCurrentThread();
    JsonUserDefaults defaults(path, executor);
    LinuxSettings::read(defaults);
    // A file is either understood or set aside unchanged; it is never lost.
    const bool isUnderstood = QJsonDocument::fromJson(content).isObject();
    require(QFile::exists(path) == isUnderstood);
    require(fuzz::readFile(isUnderstood ? path : path + QStringLiteral(".corrupt")) == content);

    const auto before = SettingsFile(path).read();
    require(defaults.string(key).has_value() == before.value(key).isString());
    defaults.set(key, QStringLiteral("polite"));
    defaults.set(words, QStringList{QStringLiteral("Talmo")});
    QCoreApplication::processEvents();
    auto expected = throughJson(before);
    expected.insert(key, QStringLiteral("polite"));
    expected.insert(words, QJsonArray{QStringLiteral("Talmo")});
    require(SettingsFile(path).read() == expected);
    require(JsonUserDefaults(path, executor).stringArray(words) == QStringList{QStringLiteral("Talmo")});
    require((QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther)) == 0);
    require(QDir(folder).removeRecursively());
    return 0;
}
