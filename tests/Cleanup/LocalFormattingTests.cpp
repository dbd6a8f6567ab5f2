#include "Cleanup/LocalFormatting.h"

#include "Support/Printing.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <random>

namespace talmo {

void PrintTo(const TextSegment &segment, std::ostream *out)
{
    *out << '(' << segment.text.toStdString() << '|' << segment.separator.size() << ')';
}

} // namespace talmo

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TextSegment segment(const QString &text, const QString &separator = {})
{
    return {text, separator};
}

QString joined(const QString &transcript)
{
    const auto segments = splitIntoSegments(transcript);
    std::vector<QString> texts;
    for (const auto &each : segments) {
        texts.push_back(each.text);
    }
    return joinSegments(texts, segments);
}

} // namespace

TEST(SplitIntoSegments, splitsAtCommandAndRejoins)
{
    EXPECT_THAT(splitIntoSegments(u"hello new paragraph world"_s),
                ElementsAre(segment(u"hello"_s, u"\n\n"_s), segment(u"world"_s)));
    EXPECT_EQ(joined(u"hello new paragraph world"_s), u"hello\n\nworld"_s);
}

TEST(SplitIntoSegments, keepsOrderOfBothCommands)
{
    EXPECT_THAT(splitIntoSegments(u"first new line second new paragraph third"_s),
                ElementsAre(segment(u"first"_s, u"\n"_s), segment(u"second"_s, u"\n\n"_s), segment(u"third"_s)));
}

TEST(SplitIntoSegments, ignoresCase)
{
    EXPECT_EQ(joined(u"a New Line b NEW PARAGRAPH c"_s), u"a\nb\n\nc"_s);
}

TEST(SplitIntoSegments, collapsesConsecutiveCommands)
{
    EXPECT_THAT(splitIntoSegments(u"new line new line hello"_s), ElementsAre(segment(u"hello"_s)));
    EXPECT_EQ(joined(u"a new line new paragraph b"_s), u"a\nb"_s);
}

TEST(SplitIntoSegments, commandAtEndHasNoEffect)
{
    EXPECT_THAT(splitIntoSegments(u"hello new line"_s), ElementsAre(segment(u"hello"_s, u"\n"_s)));
    EXPECT_EQ(joined(u"hello new line"_s), u"hello"_s);
}

TEST(SplitIntoSegments, commandAtStartHasNoEffect)
{
    EXPECT_THAT(splitIntoSegments(u"new paragraph hello"_s), ElementsAre(segment(u"hello"_s)));
    EXPECT_THAT(splitIntoSegments(u"New line hello"_s), ElementsAre(segment(u"hello"_s)));
    EXPECT_THAT(splitIntoSegments(u"new paragraph a new line b"_s),
                ElementsAre(segment(u"a"_s, u"\n"_s), segment(u"b"_s)));
}

TEST(SplitIntoSegments, droppedSegmentDropsItsSeparator)
{
    EXPECT_THAT(splitIntoSegments(u"a new paragraph new line b new line"_s),
                ElementsAre(segment(u"a"_s, u"\n\n"_s), segment(u"b"_s, u"\n"_s)));
    EXPECT_THAT(splitIntoSegments(u"a new line \t new paragraph b"_s),
                ElementsAre(segment(u"a"_s, u"\n"_s), segment(u"b"_s)));
    // A line break is not a space, so a segment that contains one is kept.
    EXPECT_THAT(splitIntoSegments(u"a new line \n new line b"_s),
                ElementsAre(segment(u"a"_s, u"\n"_s), segment(u"\n"_s, u"\n"_s), segment(u"b"_s)));
}

TEST(SplitIntoSegments, trimsEverySpaceButNoLineBreak)
{
    for (const QString &space : {u" "_s, u"\t"_s, u"\u00A0"_s, u"\u2003"_s, u"\u3000"_s, u"\u202F"_s}) {
        EXPECT_THAT(splitIntoSegments(space + u"a"_s + space + u"new line"_s + space + u"b"_s + space),
                    ElementsAre(segment(u"a"_s, u"\n"_s), segment(u"b"_s)))
            << int(space.at(0).unicode());
    }
    for (const QString &lineBreak : {u"\n"_s, u"\r"_s, u"\u0085"_s, u"\u2028"_s, u"\u2029"_s, u"\v"_s, u"\f"_s}) {
        EXPECT_THAT(splitIntoSegments(u"a"_s + lineBreak + u" new line "_s + lineBreak + u"b"_s),
                    ElementsAre(segment(u"a"_s + lineBreak, u"\n"_s), segment(lineBreak + u"b"_s)))
            << int(lineBreak.at(0).unicode());
    }
}

TEST(JoinSegments, separatesAllButTheLast)
{
    EXPECT_EQ(joinSegments({}, {}), QString());
    EXPECT_EQ(joinSegments({u"A"_s}, {segment(u"a"_s, u"\n"_s)}), u"A"_s);
    EXPECT_EQ(joinSegments({u"A"_s, {}, u"C"_s},
                           {segment(u"a"_s, u"\n\n"_s), segment(u"b"_s, u"\n"_s), segment(u"c"_s, u"\n"_s)}),
              u"A\n\n\nC"_s);
}

TEST(SplitIntoSegments, onlyCommandsYieldNoSegment)
{
    EXPECT_THAT(splitIntoSegments(u"new line"_s), IsEmpty());
    EXPECT_THAT(splitIntoSegments(QString()), IsEmpty());
    EXPECT_THAT(splitIntoSegments(u" \t"_s), IsEmpty());
}

TEST(SplitIntoSegments, keepsPunctuationNextToCommand)
{
    EXPECT_THAT(splitIntoSegments(u"Hello, new line, world"_s),
                ElementsAre(segment(u"Hello,"_s, u"\n"_s), segment(u", world"_s)));
}

TEST(SplitIntoSegments, matchesInsideLongerWords)
{
    EXPECT_EQ(joined(u"two new lines"_s), u"two\ns"_s);
    EXPECT_EQ(joined(u"renew line here"_s), u"re\nhere"_s);
}

TEST(SplitIntoSegments, trimsSpacesButNotLineBreaks)
{
    EXPECT_THAT(splitIntoSegments(u"a\n\t new line\u00A0b"_s),
                ElementsAre(segment(u"a\n"_s, u"\n"_s), segment(u"b"_s)));
}

TEST(SplitIntoSegments, caseFoldingThatLengthensTextDoesNotShiftSplit)
{
    EXPECT_EQ(joined(u"İİİ new line"_s), u"İİİ"_s);
    EXPECT_EQ(joined(u"İİİ new line ß new paragraph ŉ"_s), u"İİİ\nß\n\nŉ"_s);
}

TEST(SplitIntoSegments, handlesLoneSurrogatesAndMegabytes)
{
    const QString lone = QString(QChar(0xDC00)) + u" new line "_s + QChar(0xD800);
    EXPECT_EQ(splitIntoSegments(lone).size(), 2U);
    QString large;
    for (int index = 0; index < 100000; ++index) {
        large += u"word new line "_s;
    }
    EXPECT_EQ(splitIntoSegments(large).size(), 100000U);
}

TEST(SplitIntoSegments, losesOnlyCommandsAndTrimmedSpaces)
{
    std::mt19937 random(42);
    const QStringList pieces = {u"a"_s, u" "_s, u"new line"_s, u"New Paragraph"_s, u"é"_s, u","_s, u"b"_s};
    const auto bare = [](QString text) {
        for (const auto *command : {"new paragraph", "new line"}) {
            text.remove(QString::fromLatin1(command), Qt::CaseInsensitive);
        }
        return text.remove(QLatin1Char(' '));
    };
    for (int round = 0; round < 500; ++round) {
        QString text;
        for (int index = 0; index < 12; ++index) {
            text += pieces.at(static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size())));
        }
        QString kept;
        for (const auto &each : splitIntoSegments(text)) {
            kept += each.text;
        }
        EXPECT_EQ(bare(kept), bare(text)) << text.toStdString();
    }
}

TEST(DetectBulletRequest, hasPhrasesInOrder)
{
    QStringList phrases;
    for (const QStringView phrase : bulletTriggerPhrases) {
        phrases.append(phrase.toString());
    }
    EXPECT_EQ(phrases, (QStringList{u"as a bulleted list"_s, u"as bullet points"_s, u"as a bullet list"_s,
                                    u"in bullet points"_s, u"as bullets"_s, u"in a list"_s, u"as a list"_s,
                                    u"make this a list"_s, u"format this as a list"_s, u"bullet point this"_s}));
}

TEST(DetectBulletRequest, removesPhraseAnywhereInText)
{
    EXPECT_EQ(detectBulletRequest(u"buy milk and eggs as a list"_s), (BulletRequest{u"buy milk and eggs"_s, true}));
    EXPECT_EQ(detectBulletRequest(u"as a bulleted list buy milk"_s), (BulletRequest{u"buy milk"_s, true}));
    EXPECT_EQ(detectBulletRequest(u"put it in a list of things"_s), (BulletRequest{u"put it of things"_s, true}));
    EXPECT_EQ(detectBulletRequest(u"milk AS A LIST"_s), (BulletRequest{u"milk"_s, true}));
}

TEST(DetectBulletRequest, triesPhrasesInOrderAndRemovesOne)
{
    EXPECT_EQ(detectBulletRequest(u"write this as a bullet list as a list"_s),
              (BulletRequest{u"write this as a list"_s, true}));
    EXPECT_EQ(detectBulletRequest(u"as a list milk as a list"_s), (BulletRequest{u"milk as a list"_s, true}));
    // The shorter phrase comes first in the list.
    EXPECT_EQ(detectBulletRequest(u"format this as a list"_s), (BulletRequest{u"format this"_s, true}));
}

TEST(DetectBulletRequest, collapsesDoubleSpacesOnlyAfterRemovingPhrase)
{
    EXPECT_EQ(detectBulletRequest(u"a   b  as a list    c"_s).text, u"a b c"_s);
    EXPECT_EQ(detectBulletRequest(u" a  b \n"_s), (BulletRequest{u"a  b"_s, false}));
    EXPECT_EQ(detectBulletRequest(u" \n "_s), (BulletRequest{QString(), false}));
    EXPECT_EQ(detectBulletRequest(u"as a list"_s), (BulletRequest{QString(), true}));
    EXPECT_EQ(detectBulletRequest(u"a\t\t b as a list \n c"_s).text, u"a\t\t b \n c"_s) << "only spaces collapse";
    EXPECT_EQ(detectBulletRequest(u"a as a list\n"_s).text, u"a"_s);
}

TEST(FormatLocally, capitalisesFirstCharacterAndEndsSentence)
{
    EXPECT_EQ(formatLocally(u"hello world"_s), u"Hello world."_s);
    EXPECT_EQ(formatLocally(u"is it done?"_s), u"Is it done?"_s);
    EXPECT_EQ(formatLocally(u"stop!"_s), u"Stop!"_s);
    EXPECT_EQ(formatLocally(u"ok,"_s), u"Ok,."_s);
    EXPECT_EQ(formatLocally(u"  "_s), QString());
    EXPECT_EQ(formatLocally(u" a\n"_s), u"A."_s);
}

TEST(FormatLocally, onlyThreeCharactersEndASentence)
{
    for (const QString &end : {u"."_s, u"!"_s, u"?"_s}) {
        EXPECT_EQ(formatLocally(u"so"_s + end), u"So"_s + end);
    }
    for (const QString &end : {u","_s, u":"_s, u"…"_s, u"~"_s, u"\""_s, u")"_s, u"。"_s}) {
        EXPECT_EQ(formatLocally(u"so"_s + end), u"So"_s + end + u"."_s);
    }
    EXPECT_EQ(formatLocally(u"\u2028so\u2029"_s), u"So."_s);
    EXPECT_EQ(formatLocally(u"one\u2028two"_s), u"One\u2028two."_s) << "inner text stays unchanged";
    EXPECT_EQ(formatLocally(u"."_s), u"."_s);
}

TEST(FormatLocally, capitalisesOneWholeCharacter)
{
    EXPECT_EQ(formatLocally(u"ßtraße"_s), u"SStraße."_s);
    EXPECT_EQ(formatLocally(u"e\u0301cole"_s), u"E\u0301cole."_s);
    EXPECT_EQ(formatLocally(u"\U0001F600 fine"_s), u"\U0001F600 fine."_s);
}

TEST(FormatLocally, leavesInnerCharactersUnchanged)
{
    EXPECT_EQ(formatLocally(u"one.  two ,three i"_s), u"One.  two ,three i."_s);
    const QString lone = QString(QChar(0xD800)) + u"x"_s;
    EXPECT_EQ(formatLocally(lone), lone + QLatin1Char('.'));
}

} // namespace talmo::test
