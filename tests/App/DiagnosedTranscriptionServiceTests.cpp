#include "App/DiagnosedTranscriptionService.h"

#include "Base/Error.h"
#include "Input/Audio/AudioRecorder.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using Finding = MicrophoneReport::Finding;

class FixedReport final : public MicrophoneReporter {
public:
    MicrophoneReport report() const override { return value; }
    MicrophoneReport value;
};

class ScriptedTranscription final : public TranscriptionService {
public:
    std::exception_ptr startFailure;
    QString text;

    QCoro::Task<ModelStatus> modelStatus(QString) override { co_return ModelStatus{}; }
    QCoro::Task<void> installModel(QString) override { co_return; }
    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService>, QString, UpdateHandler,
                                         ErrorHandler) override
    {
        if (startFailure) {
            std::rethrow_exception(startFailure);
        }
        co_return;
    }
    QCoro::Task<QString> stopTranscription() override { co_return text; }
    QCoro::Task<void> cancelTranscription() override { co_return; }
};

QCoro::Task<void> noteStart(QCoro::Task<void> starting, QString *outcome)
{
    try {
        co_await starting;
        *outcome = u"started"_s;
    } catch (const Error &error) {
        *outcome = error.localizedDescription();
    }
}

QCoro::Task<void> noteStop(QCoro::Task<QString> stopping, QString *outcome)
{
    try {
        const QString text = co_await stopping;
        *outcome = u"text: "_s + text;
    } catch (const Error &error) {
        *outcome = error.localizedDescription();
    }
}

class DiagnosedTranscriptionTest : public testing::Test {
protected:
    QString start()
    {
        QString outcome;
        auto task = noteStart(service.startTranscription(nullptr, u"en"_s, {}, {}), &outcome);
        settle();
        return outcome;
    }
    QString stop()
    {
        QString outcome;
        auto task = noteStop(service.stopTranscription(), &outcome);
        settle();
        return outcome;
    }
    std::shared_ptr<ScriptedTranscription> inner = std::make_shared<ScriptedTranscription>();
    std::shared_ptr<FixedReport> microphone = std::make_shared<FixedReport>();
    DiagnosedTranscriptionService service{inner, microphone};
};

} // namespace

TEST_F(DiagnosedTranscriptionTest, distinguishesMissingServerFromMissingMicrophone)
{
    inner->startFailure = std::make_exception_ptr(RecorderError(RecorderError::Case::NoInputAvailable));
    EXPECT_EQ(start(), u"No microphone input is available."_s);
    microphone->value = {Finding::NoServer, {}};
    EXPECT_EQ(start(), MicrophoneReport(microphone->value).message());
    inner->startFailure = std::make_exception_ptr(Error(u"Something else."_s));
    EXPECT_EQ(start(), u"Something else."_s);
}

TEST_F(DiagnosedTranscriptionTest, explainsWhyNothingWasHeard)
{
    EXPECT_EQ(stop(), u"text: "_s);
    microphone->value = {Finding::OnlySilence, u"Built-in Audio"_s};
    EXPECT_EQ(stop(), u"The microphone “Built-in Audio” gives only silence. Is it muted?"_s);
    microphone->value.finding = Finding::Unplugged;
    EXPECT_TRUE(stop().startsWith(u"The microphone “Built-in Audio” was unplugged."_s));
}

TEST_F(DiagnosedTranscriptionTest, keepsTextFromAMicrophoneThatWasUnplugged)
{
    inner->text = u"hello"_s;
    microphone->value = {Finding::Unplugged, u"Built-in Audio"_s};
    EXPECT_EQ(stop(), u"text: hello"_s);
}

} // namespace talmo::test
