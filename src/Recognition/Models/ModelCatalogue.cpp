#include "Recognition/Models/ModelCatalogue.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QSysInfo>

#include <algorithm>
#include <tuple>

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

/// "1.13.8", or empty.
QString readVersion(const QJsonObject &object, const char *key)
{
    const QString version = object.value(QLatin1String(key)).toString();
    if (!version.isEmpty() && !isWhole(version, "[0-9]+([.][0-9]+)*")) {
        throw Error(QStringLiteral("“%1” must be a version such as 1.13.8").arg(QLatin1String(key)));
    }
    return version;
}

ModelEntry readEntry(const QJsonObject &object, bool isComponent)
{
    const auto text = [&object](const char *key) { return object.value(QLatin1String(key)).toString(); };
    ModelEntry entry;
    entry.id = text("id");
    // Used as a folder name.
    if (!isWhole(entry.id, "[a-z0-9][a-z0-9._-]{0,63}")) {
        throw Error(QStringLiteral("“id” must consist of lower-case letters, digits, dots, underscores and hyphens"));
    }
    entry.title = text("title").isEmpty() ? entry.id : text("title");
    if (!isComponent) {
        entry.languages = readLanguages(object);
    }
    entry.engine = text("engine");
    entry.kind = text("kind");
    entry.address = QUrl(text("address"), QUrl::StrictMode);
    if (!isPermittedAddress(entry.address)) {
        throw Error(QStringLiteral("“address” must begin with https://"));
    }
    entry.size = wholeNumber(object, "size");
    if (const auto megabytes = wholeNumber(object, "approximateMegabytes")) {
        entry.approximateMegabytes = static_cast<int>(*megabytes);
    }
    entry.sha256 = text("sha256").toLatin1().toLower();
    if (!entry.sha256.isEmpty() && !isWhole(text("sha256"), "[0-9A-Fa-f]{64}")) {
        throw Error(QStringLiteral("“sha256” must be 64 hexadecimal digits"));
    }
    entry.licence = text("licence");
    entry.licenceAddress = QUrl(text("licenceAddress"));
    return entry;
}

ModelEntry readModel(const QJsonObject &object)
{
    ModelEntry entry = readEntry(object, false);
    entry.hotWords = object.value(QStringLiteral("hotWords")).toString();
    entry.gives = object.value(QStringLiteral("gives")).toString();
    entry.hasPunctuation = object.value(QStringLiteral("punctuation")).toBool();
    entry.minLibrary = readVersion(object, "minLibrary");
    entry.cores = static_cast<int>(wholeNumber(object, "cores").value_or(1));
    for (const auto &value : object.value(QStringLiteral("needs")).toArray()) {
        entry.needs.append(value.toString());
    }
    return entry;
}

ModelEntry readComponent(const QJsonObject &object)
{
    ModelEntry entry = readEntry(object, true);
    entry.version = readVersion(object, "version");
    return entry;
}

/// A library that names no processor is taken to fit.
bool fitsThisProcessor(const QJsonObject &object)
{
    const QString processor = object.value(QStringLiteral("cpu")).toString();
    return processor.isEmpty() || processor == QSysInfo::buildCpuArchitecture();
}

/// Adds those entries that the list does not have.
void complete(std::vector<ModelEntry> &list, const std::vector<ModelEntry> &more)
{
    for (const auto &entry : more) {
        if (std::none_of(list.begin(), list.end(), [&entry](const ModelEntry &each) { return each.id == entry.id; })) {
            list.push_back(entry);
        }
    }
}

const ModelEntry *entryOf(const std::vector<ModelEntry> &list, const QString &id)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [&id](const ModelEntry &entry) { return entry.id == id; });
    return found == list.end() ? nullptr : &*found;
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
    const QString language = locale.section(end, 0, 0);
    // What a system without a language reports. Its messages are English, so its user reads English.
    if (language == QStringLiteral("C") || language == QStringLiteral("POSIX")) {
        return QStringLiteral("en");
    }
    return language.toLower();
}

const QString ModelEntry::libraryKind = QStringLiteral("library");

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
    const auto object = QJsonDocument::fromJson(json, &problem).object();
    const auto models = object.value(QStringLiteral("models"));
    const auto components = object.value(QStringLiteral("components"));
    if (problem.error != QJsonParseError::NoError) {
        throw Error(problem.errorString());
    }
    if (!models.isArray() && !components.isArray()) {
        throw Error(QStringLiteral("“models” is not a list"));
    }
    ModelCatalogue catalogue;
    catalogue.add(components, true);
    catalogue.add(models, false);
    return catalogue;
}

void ModelCatalogue::add(const QJsonValue &list, bool areComponents)
{
    auto &entries = areComponents ? m_components : m_entries;
    for (const auto &value : list.toArray()) {
        const auto object = value.toObject();
        const QString id = object.value(QStringLiteral("id")).toString();
        try {
            if (areComponents && !fitsThisProcessor(object)) {
                continue;
            }
            if (entryOf(entries, id) != nullptr) {
                throw Error(QStringLiteral("listed twice"));
            }
            entries.push_back(areComponents ? readComponent(object) : readModel(object));
        } catch (const Error &error) {
            throw Error(QStringLiteral("%1 “%2”: %3")
                            .arg(areComponents ? QStringLiteral("component") : QStringLiteral("model"), id,
                                 error.localizedDescription()));
        }
    }
}

ModelCatalogue ModelCatalogue::withUsersFile(const QString &path)
{
    ModelCatalogue catalogue = parse(contentOf(QString::fromLatin1(builtInPath)));
    if (!QFile::exists(path)) {
        return catalogue;
    }
    try {
        ModelCatalogue users = parse(contentOf(path));
        users.m_ownEntries = users.m_entries.size();
        complete(users.m_entries, catalogue.m_entries);
        complete(users.m_components, catalogue.m_components);
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

void ModelCatalogue::setOffered(const std::function<bool(const ModelEntry &)> &isOffered)
{
    for (auto &entry : m_entries) {
        entry.isOffered = isOffered(entry);
    }
}

const ModelEntry *ModelCatalogue::find(const QString &id) const
{
    return entryOf(m_entries, id);
}

const ModelEntry *ModelCatalogue::findComponent(const QString &id) const
{
    return entryOf(m_components, id);
}

const ModelEntry *ModelCatalogue::libraryOf(const QString &engine) const
{
    const auto found = std::find_if(m_components.begin(), m_components.end(), [&engine](const ModelEntry &component) {
        return component.isLibrary() && component.engine == engine;
    });
    return found == m_components.end() ? nullptr : &*found;
}

const ModelEntry *ModelCatalogue::bestFor(const QString &locale) const
{
    constexpr int coresOfAnyMachine = 2;
    const ModelEntry *smallest = nullptr;
    for (const auto &entry : m_entries) {
        if (!entry.isOffered || !entry.speaks(locale)) {
            continue;
        }
        if (entry.cores <= coresOfAnyMachine) {
            return &entry;
        }
        if (smallest == nullptr || entry.cores < smallest->cores) {
            smallest = &entry;
        }
    }
    return smallest;
}

const ModelEntry *ModelCatalogue::nextSmaller(const ModelEntry &entry, const QString &locale) const
{
    return preferred(
        [&entry, &locale](const ModelEntry &each) { return each.speaks(locale) && each.cores < entry.cores; });
}

const ModelEntry *ModelCatalogue::betterThan(const QStringList &installed, const QString &locale, int processors) const
{
    const ModelEntry *best = preferred(
        [&locale, processors](const ModelEntry &each) { return each.speaks(locale) && each.cores <= processors; });
    const auto isAsGood = [this, best, &locale](const QString &id) {
        const ModelEntry *entry = find(id);
        return entry != nullptr && entry->speaks(locale) && rank(id) <= rank(best->id);
    };
    return best == nullptr || std::any_of(installed.begin(), installed.end(), isAsGood) ? nullptr : best;
}

const ModelEntry *ModelCatalogue::preferred(const std::function<bool(const ModelEntry &)> &suits) const
{
    const ModelEntry *best = nullptr;
    for (const auto &entry : m_entries) {
        if (entry.isOffered && suits(entry) && (best == nullptr || rank(entry.id) < rank(best->id))) {
            best = &entry;
        }
    }
    return best;
}

std::size_t ModelCatalogue::rank(const QString &id) const
{
    const ModelEntry *entry = find(id);
    if (entry == nullptr) {
        return m_entries.size();
    }
    const auto order = [this](const ModelEntry &each) {
        const auto index = static_cast<std::size_t>(&each - m_entries.data());
        const bool isOwn = index < m_ownEntries;
        return std::tuple(!isOwn, isOwn ? 0 : -each.cores, index);
    };
    return static_cast<std::size_t>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [&order, entry](const ModelEntry &each) { return order(each) < order(*entry); }));
}

} // namespace talmo
