#include "LanguageModel/SmallerModel.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

QString recommended(const QString &model)
{
    return smallerModel(model).value_or(RecommendedModel()).name;
}

} // namespace

TEST(SmallerModel, readsSizeFromNamesOfServers)
{
    const std::vector<std::pair<QString, double>> sizes{
        {u"qwen2.5:7b-instruct-q4_K_M"_s, 7},
        {u"Qwen2.5-0.5B-Instruct-Q4_K_M.gguf"_s, 0.5},
        {u"/models/gemma-3-1b-it-Q8_0.gguf"_s, 1},
        {u"smollm2:135m"_s, 0.135},
        {u"Llama-3.2-3B-Instruct"_s, 3},
        {u"qwen3-30b-a3b"_s, 3},
        {u"gemma-3n-E4B-it"_s, 4},
        {u"llama3.2:latest"_s, 3.2},
        {u"llama3.2"_s, 3.2},
        {u"granite4:micro"_s, 3.4},
        {u"ibm/granite-4.0-micro"_s, 3.4},
        {u"qwen3"_s, 8.2},
    };
    for (const auto &[name, billions] : sizes) {
        const auto found = billionsOfParameters(name);
        ASSERT_TRUE(found.has_value()) << name.toStdString();
        EXPECT_DOUBLE_EQ(*found, billions) << name.toStdString();
    }
}

TEST(SmallerModel, doesNotGuessSizes)
{
    for (const auto &name : {u""_s, u"test-model"_s, u"my-b"_s, u"mixtral-8x7b"_s, u"gpt-4"_s, u"model-q4_k_m"_s,
                             u"llama3.22"_s, u"qwen3.5"_s, u"20bananas"_s, u"99999b"_s}) {
        EXPECT_EQ(billionsOfParameters(name), std::nullopt) << name.toStdString();
        EXPECT_EQ(recommended(name), QString()) << name.toStdString();
    }
}

TEST(SmallerModel, recommendsLargestThatIsClearlyFaster)
{
    EXPECT_EQ(recommended(u"qwen2.5:7b"_s), u"Qwen3 4B Instruct 2507"_s);
    EXPECT_EQ(recommended(u"model-5.5b"_s), u"Granite 4.0 Micro"_s);
    EXPECT_EQ(recommended(u"Qwen3-4B-Instruct-2507"_s), u"Qwen2.5 0.5B Instruct"_s);
    EXPECT_EQ(recommended(u"granite4:micro"_s), u"Qwen2.5 0.5B Instruct"_s);
    EXPECT_EQ(recommended(u"gemma3:1b"_s), u"Qwen2.5 0.5B Instruct"_s);
    EXPECT_EQ(smallerModel(u"gemma3:1b"_s)->megabytes, 491);
    EXPECT_EQ(smallerModel(u"gemma3:1b"_s)->licence, u"Apache 2.0"_s);
}

TEST(SmallerModel, recommendsNothingLargerThanModelInUse)
{
    EXPECT_EQ(recommended(u"qwen2.5:0.5b"_s), QString());
    EXPECT_EQ(recommended(u"qwen3:0.6b"_s), QString());
    EXPECT_EQ(recommended(u"smollm2:135m"_s), QString());
}

} // namespace talmo::test
