#include "Cleanup/CleanupInstructions.h"

#include "Cleanup/ExpectedInstructions.h"
#include "Settings/TextTone.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

#include <string>

namespace talmo::test {

namespace {

using namespace expected;

std::string built(const QStringList &words, bool isBulletList, bool concise, TextTone tone)
{
    return buildInstructions(words, isBulletList, concise, tone).toStdString();
}

std::string joined(const std::vector<std::string> &blocks)
{
    std::string text;
    for (const auto &block : blocks) {
        text += (text.empty() ? "" : "\n") + block;
    }
    return text;
}

/// The lines between the common rules and the closing examples, for each tone without and with conciseness.
struct Row {
    TextTone tone;
    bool concise;
    std::vector<std::string> middle;
};

const std::vector<Row> rows{
    {TextTone::Standard, false, {ruleMinimal}},
    {TextTone::Standard, true, {ruleOtherwise, ruleConcise}},
    {TextTone::Professional, false, {ruleOtherwise, professional}},
    {TextTone::Professional, true, {ruleOtherwise, ruleConcise, professional}},
    {TextTone::Friendly, false, {ruleOtherwise, friendly}},
    {TextTone::Friendly, true, {ruleOtherwise, ruleConcise, friendly}},
    {TextTone::Polite, false, {ruleOtherwise, polite}},
    {TextTone::Polite, true, {ruleOtherwise, ruleConcise, polite}},
};

std::vector<std::string> blocksOf(const Row &row)
{
    std::vector<std::string> blocks{head};
    blocks.insert(blocks.end(), row.middle.begin(), row.middle.end());
    blocks.emplace_back(closing);
    return blocks;
}

const std::string dictionaryLine = std::string(dictionaryPrefix) + "Talmo, Kubernetes.";

} // namespace

TEST(CleanupInstructions, everyCombinationWithoutDictionary)
{
    for (const auto &row : rows) {
        auto blocks = blocksOf(row);
        EXPECT_EQ(built({}, false, row.concise, row.tone), joined(blocks));
        blocks.insert(blocks.end(), {"", bulletInstruction});
        EXPECT_EQ(built({}, true, row.concise, row.tone), joined(blocks));
    }
}

TEST(CleanupInstructions, everyCombinationWithDictionary)
{
    for (const auto &row : rows) {
        auto blocks = blocksOf(row);
        blocks.push_back(dictionaryLine);
        EXPECT_EQ(built({u"Talmo"_s, u"Kubernetes"_s}, false, row.concise, row.tone), joined(blocks));
        blocks.insert(blocks.end(), {"", bulletInstruction});
        EXPECT_EQ(built({u"Talmo"_s, u"Kubernetes"_s}, true, row.concise, row.tone), joined(blocks));
    }
}

TEST(CleanupInstructions, plainInstructionsAre32LinesEndingWithOutputFormat)
{
    const auto lines = buildInstructions({}, false, false, TextTone::Standard).split(u'\n');
    EXPECT_EQ(lines.size(), 32);
    EXPECT_TRUE(lines.last().startsWith(u"Output format: respond with ONLY the edited transcript text itself."_s));
}

TEST(CleanupInstructions, dictionaryWordsAreUsedVerbatim)
{
    const auto lines =
        buildInstructions({u" b "_s, u"a, \"c\""_s, u" b "_s}, false, false, TextTone::Standard).split(u'\n');
    EXPECT_EQ(lines.last().toStdString(), std::string(dictionaryPrefix) + " b , a, \"c\",  b .");
}

TEST(CleanupInstructions, promptWrapsTranscriptInTagsOnly)
{
    EXPECT_EQ(transcriptPrompt(u"hello world"_s), u"<transcript>hello world</transcript>"_s);
    EXPECT_EQ(transcriptPrompt(QString()), u"<transcript></transcript>"_s);
}

} // namespace talmo::test
