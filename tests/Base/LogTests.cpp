#include "Base/Log.h"

#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

TEST(Log, fillsPlaceholdersInOrder)
{
    EXPECT_EQ(formatLogLine("a=%{bool}d b=%lu c=%s d=%@", {true, quint64(1) << 40, u"x"_s, u"y"_s}),
              u"a=true b=1099511627776 c=x d=y"_s);
}

TEST(Log, leavesOtherPercentSignsAlone)
{
    EXPECT_EQ(formatLogLine("100 % and %q and %s", {}), u"100 % and %q and %s"_s);
    EXPECT_EQ(formatLogLine("%s", {u"50 %s"_s}), u"50 %s"_s);
    EXPECT_EQ(formatLogLine("", {u"unused"_s}), QString());
}

TEST(Log, hasTwoCategories)
{
    RecordingLog log;
    generalLog().debug("one %s", {u"two"_s});
    hotkeyLog().debug("three");
    generalLog().error("four");
    EXPECT_THAT(log.lines(),
                ElementsAre(u"general debug: one two"_s, u"hotkey debug: three"_s, u"general error: four"_s));
}

namespace {

QStringList *captured = nullptr;

void capture(QtMsgType, const QMessageLogContext &context, const QString &line)
{
    captured->append(QString::fromLatin1(context.category) + QLatin1Char(' ') + line);
}

} // namespace

TEST(Log, suppressesDebugLinesByDefault)
{
    QStringList lines;
    captured = &lines;
    const auto previous = qInstallMessageHandler(&capture);
    generalLog().debug("raw transcript: %s", {u"private"_s});
    generalLog().error("shown");
    qInstallMessageHandler(previous);
    EXPECT_EQ(lines, QStringList{u"talmo.general shown"_s});
}

} // namespace talmo::test
