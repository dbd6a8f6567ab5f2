#include "Recognition/Sherpa/OnnxFile.h"

#include "Recognition/Sherpa/SherpaFiles.h"
#include "Support/ToyModels.h"

namespace talmo::test {

namespace {

/// Needs no library.
class OnnxFileTest : public ToyModels {
protected:
    void SetUp() override {}
};

} // namespace

TEST_F(OnnxFileTest, readsMetadataInputsAndOutputs)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    const OnnxFile encoder = OnnxFile::read(folder(u"toy/encoder.onnx"_s));
    EXPECT_EQ(encoder.metadata.value("model_type"), "EncDecRNNTBPEModel");
    EXPECT_TRUE(encoder.metadata.contains("normalize_type"));
    EXPECT_EQ(encoder.inputs, (QByteArrayList{"audio_signal", "length"}));
    EXPECT_EQ(encoder.outputs, (QByteArrayList{"outputs", "encoded_lengths"}));
    EXPECT_EQ(OnnxFile::read(folder(u"toy/decoder.onnx"_s)).outputs.size(), 4);
}

TEST_F(OnnxFileTest, readsNothingFromOtherOrDamagedFiles)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    QFile whole(folder(u"toy/encoder.onnx"_s));
    ASSERT_TRUE(whole.open(QFile::ReadOnly));
    const QByteArray content = whole.readAll();
    for (qsizetype length = 0; length < content.size(); length += 7) {
        writeFile(folder(u"cut.onnx"_s), content.left(length));
        EXPECT_LE(OnnxFile::read(folder(u"cut.onnx"_s)).metadata.size(), 6);
    }
    writeFile(folder(u"other.onnx"_s), QByteArray(3000, '\xff'));
    EXPECT_TRUE(OnnxFile::read(folder(u"other.onnx"_s)).metadata.isEmpty());
    EXPECT_TRUE(OnnxFile::read(folder(u"missing.onnx"_s)).outputs.isEmpty());
}

} // namespace talmo::test
