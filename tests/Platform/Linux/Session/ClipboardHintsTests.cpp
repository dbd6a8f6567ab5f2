#include "Platform/Linux/Session/ClipboardHints.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using Representations = QList<PasteboardRepresentation>;

PasteboardRepresentation offer(const char *type, const char *data)
{
    return {QString::fromLatin1(type), data, QString::fromLatin1(type), 8};
}

const PasteboardRepresentation text = offer("UTF8_STRING", "secret");

} // namespace

TEST(ClipboardHints, offersHintsOfEachHistoryProgram)
{
    const Representations expected = {offer("x-kde-passwordManagerHint", "secret"),
                                      offer("application/x-copyq-hidden", "1")};
    EXPECT_EQ(historyHints(), expected);
}

TEST(ClipboardHints, eitherHintMarksContentAsSecret)
{
    EXPECT_TRUE(isSecret({text, offer("x-kde-passwordManagerHint", "secret")}));
    EXPECT_TRUE(isSecret({offer("application/x-copyq-hidden", "1"), text}));
}

TEST(ClipboardHints, contentWithoutHintIsNotSecret)
{
    EXPECT_FALSE(isSecret({}));
    EXPECT_FALSE(isSecret({text, offer("text/plain", "1")}));
}

TEST(ClipboardHints, otherValueIsNotSecret)
{
    for (const char *value : {"", "Secret", "secret\n", "1", "public"}) {
        EXPECT_FALSE(isSecret({text, offer("x-kde-passwordManagerHint", value)})) << value;
    }
    for (const char *value : {"", "0", "1\n", "true", "secret"}) {
        EXPECT_FALSE(isSecret({text, offer("application/x-copyq-hidden", value)})) << value;
    }
}

TEST(ClipboardHints, hintNameIsCaseSensitive)
{
    EXPECT_FALSE(isSecret({text, offer("x-kde-passwordmanagerhint", "secret")}));
    EXPECT_FALSE(isSecret({text, offer("application/X-CopyQ-Hidden", "1")}));
}

TEST(ClipboardHints, hintReadInAnotherNativeEncodingIsSecret)
{
    EXPECT_TRUE(isSecret({{QStringLiteral("x-kde-passwordManagerHint"), "secret", QStringLiteral("STRING"), 8}}));
}

} // namespace talmo::test
