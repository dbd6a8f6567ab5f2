#include "Recognition/Models/ModelCatalogue.h"

#include "Base/Error.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

QByteArray catalogueOf(const QByteArray &entry)
{
    return "{\"models\": [" + entry + "]}";
}

QByteArray entryWith(const QByteArray &field = {})
{
    return "{\"id\": \"toy\", \"languages\": [\"en\"], \"address\": \"https://example.org/toy.tar.bz2\"" +
           (field.isEmpty() ? QByteArray() : ", " + field) + "}";
}

QString complaintAbout(const QByteArray &json)
{
    try {
        ModelCatalogue::parse(json);
    } catch (const Error &error) {
        return error.localizedDescription();
    }
    return {};
}

} // namespace

TEST(ModelCatalogue, bundledCatalogueIsValid)
{
    const auto catalogue = ModelCatalogue::withUsersFile({});
    ASSERT_GT(catalogue.entries().size(), 5U);
    // Nobody has published these.
    const QStringList withoutChecksum{u"vosk-bn"_s};
    const QStringList withoutSize{u"vosk-bn"_s, u"x-asr-zh-en-480"_s, u"moonshine-tiny-en-v1"_s};
    for (const auto &entry : catalogue.entries()) {
        EXPECT_EQ(entry.address.scheme(), u"https"_s) << entry.id.toStdString();
        EXPECT_EQ(entry.engine, u"sherpa-onnx"_s);
        EXPECT_FALSE(entry.licence.isEmpty()) << entry.id.toStdString();
        EXPECT_FALSE(entry.gives.isEmpty()) << entry.id.toStdString();
        EXPECT_FALSE(entry.minLibrary.isEmpty()) << entry.id.toStdString();
        EXPECT_TRUE(entry.needs.contains(u"silero-vad"_s))
            << entry.id.toStdString(); // The embedded engine uses it, too.
        for (const auto &need : entry.needs) {
            EXPECT_NE(catalogue.findComponent(need), nullptr) << need.toStdString();
        }
        EXPECT_NE(entry.size.has_value(), withoutSize.contains(entry.id)) << entry.id.toStdString();
        EXPECT_EQ(entry.sha256.size(), withoutChecksum.contains(entry.id) ? 0 : 64) << entry.id.toStdString();
    }
    EXPECT_EQ(catalogue.entries().front().id, u"kroko-en"_s);
}

TEST(ModelCatalogue, bundledLibraryIsVerifiedAndForThisProcessor)
{
    const auto catalogue = ModelCatalogue::withUsersFile({});
    const ModelEntry *library = catalogue.libraryOf(u"sherpa-onnx"_s);
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(library->size.has_value());
    EXPECT_EQ(library->sha256.size(), 64);
    EXPECT_FALSE(library->version.isEmpty());
    const QString processor = QSysInfo::buildCpuArchitecture() == u"x86_64"_s ? u"x64"_s : u"aarch64"_s;
    EXPECT_TRUE(library->address.toString().contains(processor));
    EXPECT_EQ(catalogue.libraryOf(u"another"_s), nullptr);
}

TEST(ModelCatalogue, componentsForOtherProcessorsAreLeftOut)
{
    const auto catalogue = ModelCatalogue::parse(
        R"({"components": [{"id": "a", "cpu": "z80", "address": "https://example.org/a"},
                           {"id": "b", "address": "https://example.org/b"}]})");
    ASSERT_EQ(catalogue.components().size(), 1U);
    EXPECT_EQ(catalogue.components().front().id, u"b"_s);
}

TEST(ModelCatalogue, picksBestModelForLocale)
{
    const auto catalogue = ModelCatalogue::withUsersFile({});
    EXPECT_EQ(catalogue.bestFor(u"de_AT.UTF-8"_s)->id, u"kroko-de"_s);
    EXPECT_EQ(catalogue.bestFor(u"fr-CA"_s)->id, u"kroko-fr"_s);
    EXPECT_EQ(catalogue.bestFor(u"en_GB"_s)->id, u"kroko-en"_s);
    EXPECT_EQ(catalogue.bestFor(u"tlh"_s), nullptr);
    EXPECT_EQ(catalogue.bestFor(u"C"_s)->id, u"kroko-en"_s);
    EXPECT_EQ(catalogue.bestFor(QString()), nullptr);
}

TEST(ModelCatalogue, beginsWithSmallestModelWhereNoneSuitsAnyMachine)
{
    auto catalogue = ModelCatalogue::withUsersFile({});
    catalogue.setOffered([](const ModelEntry &entry) { return entry.kind == u"transducer"_s; });
    EXPECT_EQ(catalogue.bestFor(u"it_IT"_s)->id, u"nemotron-3.5-1120"_s);
}

TEST(ModelCatalogue, namesNextSmallerModelUntilThereIsNone)
{
    auto catalogue = ModelCatalogue::withUsersFile({});
    catalogue.setOffered([](const ModelEntry &entry) { return entry.kind == u"transducer"_s; });
    const ModelEntry *smaller = catalogue.nextSmaller(*catalogue.find(u"nemotron-en-560"_s), u"en"_s);
    EXPECT_EQ(smaller->id, u"nemotron-3.5-1120"_s);
    smaller = catalogue.nextSmaller(*smaller, u"en"_s);
    EXPECT_EQ(smaller->id, u"kroko-en"_s);
    smaller = catalogue.nextSmaller(*smaller, u"en"_s);
    EXPECT_EQ(smaller->id, u"zipformer-en-small"_s);
    EXPECT_EQ(catalogue.nextSmaller(*smaller, u"en"_s), nullptr);
}

TEST(ModelCatalogue, recommendsMoreAccurateModelForStrongMachines)
{
    auto catalogue = ModelCatalogue::withUsersFile({});
    catalogue.setOffered([](const ModelEntry &entry) { return entry.kind == u"transducer"_s; });
    const QStringList kroko{u"kroko-en"_s};
    EXPECT_EQ(catalogue.betterThan(kroko, u"en"_s, 4), nullptr);
    EXPECT_EQ(catalogue.betterThan(kroko, u"en"_s, 8)->id, u"nemotron-en-560"_s);
    EXPECT_EQ(catalogue.betterThan({u"nemotron-en-560"_s}, u"en"_s, 8), nullptr);
    EXPECT_LT(catalogue.rank(u"nemotron-en-560"_s), catalogue.rank(u"kroko-en"_s));
}

TEST(ModelCatalogue, modelsThatAreNotOfferedAreNeverRecommended)
{
    auto catalogue = ModelCatalogue::withUsersFile({});
    catalogue.setOffered([](const ModelEntry &entry) { return entry.id == u"zipformer-en-small"_s; });
    EXPECT_EQ(catalogue.bestFor(u"en"_s)->id, u"zipformer-en-small"_s);
    EXPECT_EQ(catalogue.bestFor(u"de"_s), nullptr);
    EXPECT_EQ(catalogue.betterThan({}, u"en"_s, 64)->id, u"zipformer-en-small"_s);
    EXPECT_NE(catalogue.find(u"kroko-en"_s), nullptr);
}

TEST(ModelCatalogue, usersEntriesComeFirstAndReplaceSameId)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"models.json"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(catalogueOf("{\"id\": \"kroko-de\", \"title\": \"mine\", \"languages\": [\"de\"], "
                           "\"address\": \"https://example.org/mine.zip\", \"size\": 12}"));
    file.close();
    const auto standard = ModelCatalogue::withUsersFile({});
    const auto catalogue = ModelCatalogue::withUsersFile(file.fileName());
    EXPECT_EQ(catalogue.entries().size(), standard.entries().size());
    EXPECT_EQ(catalogue.rank(u"kroko-de"_s), 0U);
    EXPECT_EQ(catalogue.find(u"kroko-de"_s)->title, u"mine"_s);
    EXPECT_EQ(catalogue.find(u"kroko-de"_s)->size, 12);
}

TEST(ModelCatalogue, invalidUserFileIsLoggedAndIgnored)
{
    const RecordingLog log;
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"models.json"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("not at all");
    file.close();
    const auto catalogue = ModelCatalogue::withUsersFile(file.fileName());
    EXPECT_EQ(catalogue.entries().size(), ModelCatalogue::withUsersFile({}).entries().size());
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_TRUE(log.lines().front().contains(file.fileName()));
}

TEST(ModelCatalogue, reportsWhatIsWrongWithWhichEntry)
{
    EXPECT_EQ(complaintAbout(catalogueOf(entryWith())), QString());
    EXPECT_TRUE(complaintAbout("{").size() > 0);
    EXPECT_TRUE(complaintAbout("{\"models\": 3}").contains(u"models"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf(entryWith() + "," + entryWith())).contains(u"twice"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf("{\"id\": \"../x\"}")).contains(u"“id”"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf("{\"id\": \".x\"}")).contains(u"“id”"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf("{\"id\": \"toy\"}")).contains(u"model “toy”: “languages”"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf(entryWith("\"size\": -1"))).contains(u"size"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf(entryWith("\"size\": \"big\""))).contains(u"size"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf(entryWith("\"sha256\": \"abc\""))).contains(u"sha256"_s));
    EXPECT_TRUE(complaintAbout(catalogueOf(entryWith("\"minLibrary\": \"new\""))).contains(u"minLibrary"_s));
    for (const auto *address :
         {"http://example.org/x", "ftp://example.org/x", "file:///etc/passwd", "", "https:///x"}) {
        const QByteArray entry =
            QByteArray("{\"id\": \"toy\", \"languages\": [\"en\"], \"address\": \"") + address + "\"}";
        EXPECT_TRUE(complaintAbout(catalogueOf(entry)).contains(u"address"_s)) << address;
    }
}

TEST(ModelCatalogue, permitsPlainHttpOnLoopbackOnly)
{
    EXPECT_TRUE(isPermittedAddress(QUrl(u"http://127.0.0.1:80/x"_s)));
    EXPECT_TRUE(isPermittedAddress(QUrl(u"http://[::1]/x"_s)));
    EXPECT_FALSE(isPermittedAddress(QUrl(u"http://localhost/x"_s))); // The name may resolve to anything.
    EXPECT_FALSE(isPermittedAddress(QUrl(u"http://127.0.0.1.example.org/x"_s)));
    EXPECT_FALSE(isPermittedAddress(QUrl(u"http://127.0.0.1@example.org/x"_s)));
}

TEST(ModelCatalogue, permitsNoRedirectFromHttpsToHttp)
{
    const QUrl secure(u"https://example.org/x"_s);
    const QUrl local(u"http://127.0.0.1/x"_s);
    EXPECT_TRUE(isPermittedRedirect(secure, QUrl(u"https://example.com/y"_s)));
    EXPECT_TRUE(isPermittedRedirect(local, secure));
    EXPECT_TRUE(isPermittedRedirect(local, local));
    EXPECT_FALSE(isPermittedRedirect(secure, local));
    EXPECT_FALSE(isPermittedRedirect(secure, QUrl(u"http://example.org/x"_s)));
    EXPECT_FALSE(isPermittedRedirect(local, QUrl(u"http://example.org/x"_s)));
}

} // namespace talmo::test
