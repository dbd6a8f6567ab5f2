#include "Recognition/Models/ModelCatalogue.h"

#include "Base/Error.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <QFile>
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
    for (const auto &entry : catalogue.entries()) {
        EXPECT_EQ(entry.address.scheme(), u"https"_s) << entry.id.toStdString();
        EXPECT_EQ(entry.engine, u"sherpa-onnx"_s);
        EXPECT_FALSE(entry.licence.isEmpty()) << entry.id.toStdString();
        EXPECT_FALSE(entry.gives.isEmpty()) << entry.id.toStdString();
    }
}

TEST(ModelCatalogue, picksBestModelForLocale)
{
    const auto catalogue = ModelCatalogue::withUsersFile({});
    EXPECT_EQ(catalogue.bestFor(u"de_AT.UTF-8"_s)->id, u"kroko-de"_s);
    EXPECT_EQ(catalogue.bestFor(u"fr-CA"_s)->id, u"kroko-fr"_s);
    EXPECT_EQ(catalogue.bestFor(u"en_GB"_s)->id, u"nemotron-en"_s);
    EXPECT_EQ(catalogue.bestFor(u"tlh"_s), nullptr);
    EXPECT_EQ(catalogue.bestFor(u"C"_s), nullptr);
    EXPECT_EQ(catalogue.bestFor(QString()), nullptr);
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
