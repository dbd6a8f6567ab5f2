// Model lists written by users, and the files in a model's folder.

#include "Base/Error.h"
#include "Fuzzing.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/Sherpa/SherpaModel.h"

#include <QRegularExpression>

#include <set>

using namespace talmo;
using fuzz::require;

namespace {

bool matches(const QString &text, const char *pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1String(pattern))).match(text).hasMatch();
}

void checkEntry(const ModelEntry &entry)
{
    require(matches(entry.id, "[a-z0-9][a-z0-9._-]*") && entry.id.size() <= 64);
    require(!entry.title.isEmpty());
    require(!entry.languages.isEmpty());
    for (const auto &language : entry.languages) {
        require(matches(language, "[a-z]{2,3}") && entry.speaks(language + QStringLiteral("_XX.UTF-8")));
    }
    const QString host = entry.address.host();
    const bool isHere = host == QStringLiteral("127.0.0.1") || host == QStringLiteral("::1");
    require(entry.address.scheme() == QStringLiteral("https") || isHere);
    require(entry.size.value_or(1) > 0);
    require(entry.approximateMegabytes.value_or(1) > 0);
    require(entry.sha256.isEmpty() || matches(QString::fromLatin1(entry.sha256), "[0-9a-f]{64}"));
}

const QString &modelFolder()
{
    static const QString folder = [] {
        const QString path = fuzz::scratchFolder() + QStringLiteral("/model");
        require(QDir().mkpath(path));
        fuzz::writeFile(path + QStringLiteral("/model.onnx"), QByteArray(200, '\x08'));
        fuzz::writeFile(path + QStringLiteral("/tokens.txt"), "<blk> 0\na 1\n");
        return path;
    }();
    return folder;
}

void checkCatalogue(const QByteArray &json)
{
    try {
        const auto catalogue = ModelCatalogue::parse(json);
        std::set<QString> ids;
        for (std::size_t index = 0; index < catalogue.entries().size(); ++index) {
            const auto &entry = catalogue.entries()[index];
            checkEntry(entry);
            require(ids.insert(entry.id).second);
            require(catalogue.rank(entry.id) == index && catalogue.find(entry.id) == &entry);
        }
        if (!catalogue.entries().empty()) {
            const auto &first = catalogue.entries().front();
            require(catalogue.bestFor(first.languages.first()) == &first);
            describeModel(modelFolder(), first);
            require(SherpaModel::examine(modelFolder()).languages == first.languages);
        }
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
}

/// A file in the model's folder that may have been written by anyone.
void checkFolder(const char *name, const QByteArray &content)
{
    const QString path = modelFolder() + QLatin1Char('/') + QLatin1String(name);
    const QByteArray before = QFile::exists(path) ? fuzz::readFile(path) : QByteArray();
    fuzz::writeFile(path, content);
    try {
        const auto model = SherpaModel::examine(modelFolder());
        require(!model.languages.isEmpty());
        require(model.isComplete());
        require(model.kind != SherpaModel::Kind::Transducer);
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
    fuzz::writeFile(path, before);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    fuzz::SilentLog::install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const int choice = data.ConsumeIntegralInRange(0, 7);
    const QByteArray content = fuzz::rest(data);
    if (choice == 0) {
        checkFolder("tokens.txt", content);
    } else if (choice == 1) {
        checkFolder("talmo-model.json", content);
    } else {
        checkCatalogue(content);
    }
    return 0;
}
