#include "Recognition/Sherpa/SherpaModel.h"

#include "Recognition/Sherpa/SherpaFiles.h"
#include "Support/Printing.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

const QByteArray tokens = "\u2581lo 0\n\u2581hi 1\n\u2581mid 2\n<blk> 3\n";

class SherpaModelTest : public testing::Test {
protected:
    SherpaModelTest()
    {
        writeFile(path(u"tokens.txt"_s), tokens);
        writeFile(path(u"model.onnx"_s), QByteArray("\x08") + QByteArray(2000, 'x'));
    }
    QString path(const QString &name) const { return folder.filePath(name); }
    QString complaint() const
    {
        return errorOf([this] { SherpaModel::examine(folder.path()); });
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(SherpaModelTest, acceptsValidModel)
{
    EXPECT_EQ(complaint(), QString());
    EXPECT_EQ(SherpaModel::examine(folder.path()).kind, SherpaModel::Kind::NemoCtc);
    EXPECT_EQ(SherpaModel::examine(folder.path()).languages, QStringList{u"en"_s});
    writeFile(path(u"talmo-model.json"_s), R"({"language": "de", "kind": "zipformer-ctc"})");
    EXPECT_EQ(SherpaModel::examine(folder.path()).kind, SherpaModel::Kind::ZipformerCtc);
    EXPECT_EQ(SherpaModel::examine(folder.path()).languages, QStringList{u"de"_s});
}

TEST_F(SherpaModelTest, findsTransducerPartsPreferringInt8)
{
    for (const auto &name : {u"encoder-epoch-99.onnx"_s, u"encoder-epoch-99.int8.onnx"_s, u"decoder.onnx"_s}) {
        writeFile(path(name), QByteArray("\x08") + QByteArray(2000, 'x'));
    }
    EXPECT_TRUE(complaint().contains(u"joiner"_s));
    writeFile(path(u"joiner.onnx"_s), QByteArray("\x08") + QByteArray(2000, 'x'));
    const auto model = SherpaModel::examine(folder.path());
    EXPECT_EQ(model.kind, SherpaModel::Kind::Transducer);
    EXPECT_EQ(model.encoder, u"encoder-epoch-99.int8.onnx"_s);
}

TEST_F(SherpaModelTest, takesFullDecoderBesideInt8EncoderAndJoiner)
{
    for (const auto &part : {u"encoder"_s, u"decoder"_s, u"joiner"_s}) {
        for (const auto &variant : {u"-epoch-99.int8.onnx"_s, u"-epoch-99.onnx"_s}) {
            writeFile(path(part + variant), QByteArray("\x08") + QByteArray(2000, 'x'));
        }
    }
    const auto model = SherpaModel::examine(folder.path());
    EXPECT_EQ(model.encoder, u"encoder-epoch-99.int8.onnx"_s);
    EXPECT_EQ(model.decoder, u"decoder-epoch-99.onnx"_s);
    EXPECT_EQ(model.joiner, u"joiner-epoch-99.int8.onnx"_s);
    QFile::remove(path(u"decoder-epoch-99.onnx"_s));
    EXPECT_EQ(SherpaModel::examine(folder.path()).decoder, u"decoder-epoch-99.int8.onnx"_s);
}

TEST_F(SherpaModelTest, tokensTellWhetherItWritesOnlyCapitals)
{
    const auto writesCapitals = [this](const QByteArray &list) {
        writeFile(path(u"tokens.txt"_s), list);
        return SherpaModel::examine(folder.path()).isAllCapitals;
    };
    EXPECT_TRUE(writesCapitals("<blk> 0\n<sos/eos> 1\nTHE 2\n' 3\n#0 4\n"));
    EXPECT_TRUE(writesCapitals("<blk> 0\nTHE 1\n\u7684 2\n"));
    EXPECT_FALSE(writesCapitals("<blk> 0\nTHE 1\ns 2\n"));
    EXPECT_FALSE(writesCapitals("<blk> 0\n\u7684 1\n"));
}

TEST_F(SherpaModelTest, reportsEachKindOfDamage)
{
    writeFile(path(u"model.onnx"_s), QByteArray("\x08") + "short");
    EXPECT_TRUE(complaint().contains(u"damaged"_s));
    writeFile(path(u"model.onnx"_s), QByteArray(5000, '<'));
    EXPECT_TRUE(complaint().contains(u"no model"_s));
    QFile::remove(path(u"model.onnx"_s));
    EXPECT_TRUE(complaint().contains(u"There is no model"_s));
    writeFile(path(u"tokens.txt"_s), "lo\nhi\n");
    EXPECT_TRUE(complaint().contains(u"damaged"_s));
    writeFile(path(u"tokens.txt"_s), "lo 0\nhi 1\n");
    EXPECT_TRUE(complaint().contains(u"no blank"_s));
    writeFile(path(u"tokens.txt"_s), "");
    EXPECT_TRUE(complaint().contains(u"cannot be read"_s));
    EXPECT_TRUE(errorOf([] { SherpaModel::examine(u"/nonexistent"_s); }).contains(u"no folder"_s));
}

} // namespace talmo::test
