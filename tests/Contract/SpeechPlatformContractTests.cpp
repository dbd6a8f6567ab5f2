#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "SpokenText.h"
#include "Support/Printing.h"
#include "Support/ScriptedSpeechPlatform.h"
#include "Support/SinglePlatform.h"
#include "Support/TestLoop.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cstring>

namespace talmo::test {

namespace {

struct ScriptedSubject {
    ScriptedSpeechPlatform platform;
    ScriptedSubject() { platform.finalResult = u"hello world"_s; }
};

struct PocketSphinxSubject {
    std::shared_ptr<EngineSpeechPlatform> made =
        platformWith(std::make_shared<PocketSphinxEngine>(), SerialExecutor::onNewThread(u"decoder"_s));
    EngineSpeechPlatform &platform = *made;
};

/// Speech in the recogniser's format: flite's voices are sampled at 16 kHz.
QByteArray spokenSamples(const QString &text)
{
    const QTemporaryDir folder;
    QFile file(testbed::speak(text, folder.path()));
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    constexpr qsizetype headerSize = 44;
    return QByteArray(16000, '\0') + file.readAll().mid(headerSize) + QByteArray(6400, '\0');
}

template <typename Subject>
class SpeechPlatformContract : public testing::Test {
protected:
    SpeechPlatformContract()
    {
        const auto locale = subject.platform.supportedLocale(u"en_US"_s);
        EXPECT_TRUE(waitFor(locale));
        transcriber = subject.platform.makeTranscriber(*locale.result(), TranscriberConfiguration::VolatileResults);
        const auto best = subject.platform.bestAvailableAudioFormat(transcriber);
        EXPECT_TRUE(waitFor(best));
        format = *best.result();
        analyzer = subject.platform.makeAnalyzer(transcriber);
    }
    void speak(const QByteArray &samples)
    {
        constexpr qsizetype bytes = 1366;
        for (qsizetype offset = 0; offset < samples.size(); offset += bytes) {
            const auto piece = samples.mid(offset, bytes);
            auto buffer = AudioBuffer::make(format, static_cast<quint32>(piece.size() / 2));
            std::memcpy(buffer->data(), piece.constData(), static_cast<std::size_t>(piece.size() / 2 * 2));
            buffer->setFrameLength(buffer->frameCapacity());
            continuation->yield({buffer});
        }
    }
    std::vector<SpeechResult> allResults()
    {
        std::vector<SpeechResult> results;
        const auto stream = transcriber->results();
        while (true) {
            const auto next = stream.next();
            EXPECT_TRUE(waitFor(next));
            if (!next.isFinished() || !next.result()) {
                return results;
            }
            results.push_back(*next.result());
        }
    }
    Subject subject;
    std::shared_ptr<SpeechTranscriber> transcriber;
    std::shared_ptr<SpeechAnalyzer> analyzer;
    AudioFormat format;
    std::pair<AsyncStream<AnalyzerInput>, AsyncStream<AnalyzerInput>::Continuation> made =
        AsyncStream<AnalyzerInput>::make();
    AsyncStream<AnalyzerInput> &input = made.first;
    std::optional<AsyncStream<AnalyzerInput>::Continuation> continuation = made.second;
};

using Subjects = testing::Types<ScriptedSubject, PocketSphinxSubject>;
TYPED_TEST_SUITE(SpeechPlatformContract, Subjects);

} // namespace

TYPED_TEST(SpeechPlatformContract, isAvailableAndInstalled)
{
    EXPECT_TRUE(this->subject.platform.isAvailable());
    const auto status = this->subject.platform.assetStatus(this->transcriber);
    ASSERT_TRUE(waitFor(status));
    EXPECT_EQ(status.result(), AssetStatus::Installed);
}

TYPED_TEST(SpeechPlatformContract, keepsEarlyAudioAndPublishesFinalResultAtEnd)
{
    this->speak(spokenSamples(u"hello world"_s));
    const auto started = this->analyzer->start(this->input, {});
    this->continuation->finish();
    ASSERT_TRUE(waitFor(this->analyzer->finalizeAndFinishThroughEndOfInput()));
    EXPECT_TRUE(waitFor(started));
    const auto results = this->allResults();
    ASSERT_FALSE(results.empty());
    EXPECT_EQ(results.back(), (SpeechResult{u"hello world"_s, true}));
}

TYPED_TEST(SpeechPlatformContract, cancellingEndsResultsWithoutAnother)
{
    const auto started = this->analyzer->start(this->input, {});
    this->speak(spokenSamples(u"hello"_s).left(1366));
    this->continuation->finish();
    ASSERT_TRUE(waitFor(this->analyzer->cancelAndFinishNow()));
    EXPECT_TRUE(waitFor(started));
    EXPECT_TRUE(this->allResults().empty());
}

TYPED_TEST(SpeechPlatformContract, destroyingAnalyzerEndsResults)
{
    this->analyzer.reset();
    EXPECT_TRUE(this->allResults().empty());
}

TYPED_TEST(SpeechPlatformContract, startEndsWhenLastContinuationIsDestroyed)
{
    const auto started = this->analyzer->start(this->input, {});
    this->continuation.reset();
    this->made.second.finish();
    EXPECT_TRUE(waitFor(started));
}

namespace {

using PocketSphinxTest = SpeechPlatformContract<PocketSphinxSubject>;

} // namespace

TEST_F(PocketSphinxTest, showsVolatileWordsAndFinalisesAtPause)
{
    const auto started = analyzer->start(input, {});
    speak(spokenSamples(u"hello world"_s) + QByteArray(32000, '\0') + spokenSamples(u"thank you very much"_s));
    continuation->finish();
    ASSERT_TRUE(waitFor(analyzer->finalizeAndFinishThroughEndOfInput()));
    std::vector<QString> finals;
    bool hadVolatileBeforeFirstFinal = false;
    for (const auto &result : allResults()) {
        if (result.isFinal) {
            finals.push_back(result.text);
        } else if (finals.empty()) {
            hadVolatileBeforeFirstFinal = true;
        }
    }
    EXPECT_TRUE(hadVolatileBeforeFirstFinal);
    EXPECT_THAT(finals, testing::ElementsAre(u"hello world"_s, u"thank you very much"_s));
}

TEST_F(PocketSphinxTest, silenceYieldsNoWords)
{
    const auto started = analyzer->start(input, {});
    speak(QByteArray(160000, '\0'));
    continuation->finish();
    ASSERT_TRUE(waitFor(analyzer->finalizeAndFinishThroughEndOfInput()));
    EXPECT_TRUE(allResults().empty());
}

TEST_F(PocketSphinxTest, decoderIsReusableAfterCancelledRecording)
{
    const auto started = analyzer->start(input, {});
    // Long enough to calibrate an unknown microphone, so that there is something to cancel.
    speak(spokenSamples(u"something else entirely that goes on and on for a while"_s));
    ASSERT_TRUE(waitFor(transcriber->results().next()));
    ASSERT_TRUE(waitFor(analyzer->cancelAndFinishNow()));
    continuation.reset();

    const auto next = subject.platform.makeTranscriber(u"en_US"_s, TranscriberConfiguration::VolatileResults);
    analyzer = subject.platform.makeAnalyzer(next);
    transcriber = next;
    made = AsyncStream<AnalyzerInput>::make();
    continuation = made.second;
    const auto again = analyzer->start(made.first, {});
    speak(spokenSamples(u"hello world"_s));
    continuation->finish();
    ASSERT_TRUE(waitFor(analyzer->finalizeAndFinishThroughEndOfInput()));
    EXPECT_EQ(allResults().back(), (SpeechResult{u"hello world"_s, true}));
}

} // namespace talmo::test
