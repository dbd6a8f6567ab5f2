#include "Recognition/PocketSphinx/PocketSphinxEngine.h"

#include "Base/Error.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/SinglePlatform.h"
#include "Support/TestLoop.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

TEST(EnglishModelLocale, acceptsAnyEnglishAndUnspecifiedLocale)
{
    const QString all[] = {u"en"_s,          u"en_US"_s, u"en-GB"_s, u"en_AU.UTF-8"_s,
                           u"en_US@posix"_s, u"C"_s,     u"POSIX"_s, u"C.UTF-8"_s};
    for (const QString &locale : all) {
        EXPECT_EQ(englishModelLocale(locale), u"en_US"_s) << locale.toStdString();
    }
}

TEST(EnglishModelLocale, rejectsOtherLanguagesAndGarbage)
{
    const QString all[] = {u"fr_FR"_s,
                           u"de"_s,
                           QString(),
                           u"english"_s,
                           u"ene"_s,
                           u"e"_s,
                           u"CC"_s,
                           u"en_"_s,
                           u"en\n"_s,
                           u"en US"_s,
                           u"../en"_s,
                           QString(QChar(0xD800)),
                           u"en\n"_s + QString(100000, QLatin1Char('x'))};
    for (const QString &locale : all) {
        EXPECT_EQ(englishModelLocale(locale), std::nullopt) << locale.left(20).toStdString();
    }
}

TEST(PocketSphinxEngine, missingModelErrorExplainsInstallation)
{
    const QTemporaryDir empty;
    const auto platform = platformWith(std::make_shared<PocketSphinxEngine>(empty.path()));
    const auto transcriber = platform->makeTranscriber(u"en_US"_s, TranscriberConfiguration::ProgressiveTranscription);
    EXPECT_EQ(platform->assetStatus(transcriber).result(), AssetStatus::Supported);
    const auto request = platform->assetInstallationRequest(transcriber).result();
    ASSERT_TRUE(request);
    try {
        request->downloadAndInstall().waitForFinished();
        FAIL();
    } catch (const Error &error) {
        EXPECT_TRUE(error.localizedDescription().contains(u"pocketsphinx-en-us"_s));
    }
    EXPECT_THROW(PocketSphinxDecoder::load(empty.path()), Error);
}

TEST(PocketSphinxEngine, unloadableModelFailsResults)
{
    const QTemporaryDir empty;
    const auto platform = platformWith(std::make_shared<PocketSphinxEngine>(empty.path()));
    const auto transcriber = platform->makeTranscriber(u"en_US"_s, TranscriberConfiguration::VolatileResults);
    const auto analyzer = platform->makeAnalyzer(transcriber);
    auto [input, continuation] = AsyncStream<AnalyzerInput>::make();
    const auto started = analyzer->start(input, {});
    auto buffer = AudioBuffer::make({16000, 1, SampleType::Int16}, 160);
    buffer->setFrameLength(160);
    continuation.yield({buffer});
    auto result = transcriber->results().next();
    ASSERT_TRUE(waitFor(result));
    EXPECT_THROW(result.result(), Error);
    continuation.finish();
    EXPECT_TRUE(waitFor(analyzer->finalizeAndFinishThroughEndOfInput()));
    EXPECT_TRUE(waitFor(started));
}

TEST(PocketSphinxEngine, dropsUnknownFormatAndLogsOnce)
{
    RecordingLog log;
    const auto platform = platformWith(std::make_shared<PocketSphinxEngine>());
    const auto transcriber = platform->makeTranscriber(u"en_US"_s, TranscriberConfiguration::VolatileResults);
    const auto analyzer = platform->makeAnalyzer(transcriber);
    auto [input, continuation] = AsyncStream<AnalyzerInput>::make();
    const auto started = analyzer->start(input, {});
    for (int count = 0; count < 3; ++count) {
        continuation.yield({AudioBuffer::make({48000, 2, SampleType::Float32}, 10)});
    }
    continuation.finish();
    EXPECT_TRUE(waitFor(analyzer->finalizeAndFinishThroughEndOfInput()));
    auto result = transcriber->results().next();
    EXPECT_FALSE(result.result());
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST(PocketSphinxEngine, loadsNothingOnceRefused)
{
    PocketSphinxEngine engine;
    engine.refuse(u"damaged"_s);
    EXPECT_EQ(engine.problem(), u"damaged"_s);
    EXPECT_THROW(engine.warmUp(), Error);
    EXPECT_THROW(engine.makeDecoder([](const SpeechResult &) {}), Error);
    EXPECT_EQ(engine.loadCount(), 0);
}

} // namespace talmo::test
