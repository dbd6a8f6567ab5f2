#include "Recognition/Models/ModelCatalogue.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>

namespace talmo {

namespace {

constexpr char builtInPath[] = ":/models/models.json";

bool isWhole(const QString &text, const char *pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromLatin1(pattern))).match(text).hasMatch();
}

std::optional<qint64> wholeNumber(const QJsonObject &object, const char *key)
{
    const auto value = object.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull()) {
        return std::nullopt;
    }
    const qint64 number = value.toInteger(-1);
    if (number <= 0) {
        throw Error(QStringLiteral("“%1” must be a positive number").arg(QLatin1String(key)));
    }
    return number;
}

QStringList readLanguages(const QJsonObject &object)
{
    QStringList languages;
    for (const auto &value : object.value(QStringLiteral("languages")).toArray()) {
        languages.append(value.toString());
    }
    const bool areSound = std::all_of(languages.begin(), languages.end(),
                                      [](const QString &language) { return isWhole(language, "[a-z]{2,3}"); });
    if (languages.isEmpty() || !areSound) {
        throw Error(QStringLiteral("“languages” must be a list of language codes such as [\"en\"]"));
    }
    return languages;
}

ModelEntry readEntry(const QJsonObject &object)
{
    const auto text = [&object](const char *key) { return object.value(QLatin1String(key)).toString(); };
    ModelEntry entry;
    entry.id = text("id");
    // Used as a folder name.
    if (!isWhole(entry.id, "[a-z0-9][a-z0-9._-]{0,63}")) {
        throw Error(QStringLiteral("“id” must consist of lower-case letters, digits, dots, underscores and hyphens"));
    }
    entry.title = text("title").isEmpty() ? entry.id : text("title");
    entry.engine = text("engine");
    entry.kind = text("kind");
    entry.hotWords = text("hotWords");
    entry.languages = readLanguages(object);
    entry.address = QUrl(text("address"), QUrl::StrictMode);
    if (!isPermittedAddress(entry.address)) {
        throw Error(QStringLiteral("“address” must begin with https://"));
    }
    entry.size = wholeNumber(object, "size");
    if (const auto megabytes = wholeNumber(object, "roughMegabytes")) {
        entry.roughMegabytes = static_cast<int>(*megabytes);
    }
    entry.sha256 = text("sha256").toLatin1().toLower();
    if (!entry.sha256.isEmpty() && !isWhole(text("sha256"), "[0-9A-Fa-f]{64}")) {
        throw Error(QStringLiteral("“sha256” must be 64 hexadecimal digits"));
    }
    entry.licence = text("licence");
    entry.licenceAddress = QUrl(text("licenceAddress"));
    entry.gives = text("gives");
    return entry;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw Error(QStringLiteral("cannot be read: %1").arg(file.errorString()));
    }
    return file.readAll();
}

} // namespace

bool isPermittedAddress(const QUrl &address)
{
    const QString host = address.host();
    const bool isHere = host == QStringLiteral("127.0.0.1") || host == QStringLiteral("::1");
    return address.isValid() && !host.isEmpty() &&
           (address.scheme() == QStringLiteral("https") || (isHere && address.scheme() == QStringLiteral("http")));
}

bool isPermittedRedirect(const QUrl &from, const QUrl &to)
{
    const bool isDowngrade = from.scheme() == QStringLiteral("https") && to.scheme() != QStringLiteral("https");
    return isPermittedAddress(to) && !isDowngrade;
}

QString languageOf(const QString &locale)
{
    static const QRegularExpression end(QStringLiteral("[_.@-]"));
    return locale.section(end, 0, 0).toLower();
}

bool ModelEntry::speaks(const QString &locale) const
{
    return languages.contains(languageOf(locale));
}

QString ModelEntry::name() const
{
    return QStringLiteral("%1 (%2, %3)").arg(id, title, languages.join(QStringLiteral(", ")));
}

ModelCatalogue ModelCatalogue::parse(const QByteArray &json)
{
    QJsonParseError problem;
    const auto document = QJsonDocument::fromJson(json, &problem);
    const auto list = document.object().value(QStringLiteral("models"));
    if (!list.isArray()) {
        throw Error(problem.error == QJsonParseError::NoError ? QStringLiteral("“models” is not a list")
                                                              : problem.errorString());
    }
    ModelCatalogue catalogue;
    for (const auto &value : list.toArray()) {
        const auto object = value.toObject();
        const QString id = object.value(QStringLiteral("id")).toString();
        try {
            if (catalogue.find(id) != nullptr) {
                throw Error(QStringLiteral("listed twice"));
            }
            catalogue.m_entries.push_back(readEntry(object));
        } catch (const Error &error) {
            throw Error(QStringLiteral("model “%1”: %2").arg(id, error.localizedDescription()));
        }
    }
    return catalogue;
}

ModelCatalogue ModelCatalogue::withUsersFile(const QString &path)
{
    ModelCatalogue catalogue = parse(contentOf(QString::fromLatin1(builtInPath)));
    if (!QFile::exists(path)) {
        return catalogue;
    }
    try {
        ModelCatalogue users = parse(contentOf(path));
        for (const auto &entry : catalogue.m_entries) {
            if (users.find(entry.id) == nullptr) {
                users.m_entries.push_back(entry);
            }
        }
        return users;
    } catch (const Error &error) {
        generalLog().error("ignoring %@: %@", {path, error.localizedDescription()});
        return catalogue;
    }
}

QString ModelCatalogue::usersPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/talmo/models.json");
}

const ModelEntry *ModelCatalogue::find(const QString &id) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&id](const ModelEntry &entry) { return entry.id == id; });
    return found == m_entries.end() ? nullptr : &*found;
}

const ModelEntry *ModelCatalogue::bestFor(const QString &locale) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&locale](const ModelEntry &entry) { return entry.speaks(locale); });
    return found == m_entries.end() ? nullptr : &*found;
}

std::size_t ModelCatalogue::rank(const QString &id) const
{
    const ModelEntry *entry = find(id);
    return entry == nullptr ? m_entries.size() : static_cast<std::size_t>(entry - m_entries.data());
}

} // namespace talmo
