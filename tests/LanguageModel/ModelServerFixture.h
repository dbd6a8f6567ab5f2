#pragma once

#include "Cleanup/TextCleanupService.h"
#include "LanguageModel/LoopbackLanguageModel.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"
#include "Support/TestModelServer.h"

#include <QJsonArray>

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace talmo::test {

class FakeTrust final : public ServerTrust {
public:
    bool answer = true;
    mutable std::vector<Endpoint> asked;

    bool isTrusted(const Endpoint &at, const Endpoint & /*client*/) const override
    {
        asked.push_back(at);
        return answer;
    }
};

/// A real server in a separate process. Only time is virtual, so that timeouts need no real waiting. Everything runs on
/// the test's thread.
class ModelServerFixture : public testing::Test {
protected:
    RecordingLog log;
    TestModelServer server;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread();
    std::shared_ptr<FakeTrust> trust = std::make_shared<FakeTrust>();
    std::shared_ptr<LoopbackLanguageModel> model = makeModel(server.address());

    ~ModelServerFixture() override { EXPECT_TRUE(waitFor(model->shutDown())); }

    std::shared_ptr<LoopbackLanguageModel> makeModel(const QString &address, const QString &name = {})
    {
        return std::make_shared<LoopbackLanguageModel>(
            LoopbackLanguageModel::Configuration{address, name, {server.port()}}, executor, clock, trust);
    }
    std::optional<UnavailableReason> refreshed()
    {
        EXPECT_TRUE(waitFor(model->refresh()));
        return model->unavailableReason();
    }
    QFuture<QString> ask(const QString &prompt = u"<transcript>hello</transcript>"_s)
    {
        return model->makeSession(u"instructions"_s)->respond(prompt, {SamplingMode::Greedy, std::nullopt, 64});
    }
    /// "answer: " and the text, or "error: " and the message.
    static QString outcome(const QFuture<QString> &future)
    {
        EXPECT_TRUE(waitFor(future));
        try {
            return u"answer: "_s + future.result();
        } catch (const Error &error) {
            return u"error: "_s + error.localizedDescription();
        }
    }
    QString cleaned(const QString &transcript)
    {
        const auto result = cleaning(transcript);
        EXPECT_TRUE(waitFor([&result] { return result->has_value(); }));
        return result->value_or(QString());
    }
    /// Holds the text once cleanup has finished.
    std::shared_ptr<std::optional<QString>> cleaning(const QString &transcript)
    {
        auto result = std::make_shared<std::optional<QString>>();
        TextCleanupService service(executor, model);
        service.cleanup(transcript, true, false, TextTone::Standard, {}).then([result](const QString &text) {
            *result = text;
        });
        return result;
    }
    /// Handles one request at a time, each held until letGo() is called with its name.
    void beSlow(bool isAlone, const QStringList &names)
    {
        QJsonArray rules;
        for (const auto &name : names) {
            rules.append(QJsonObject{{u"when"_s, name}, {u"answer"_s, u"Edited %1."_s.arg(name)}, {u"held"_s, name}});
        }
        server.behave({{u"slots"_s, 1}, {u"alone"_s, isAlone}, {u"chat"_s, rules}});
    }
    void letGo(const QStringList &names) { server.behave({{u"free"_s, QJsonArray::fromStringList(names)}}); }
    bool logSays(const QString &text) const
    {
        const auto lines = log.lines();
        return std::any_of(lines.begin(), lines.end(), [&text](const QString &line) { return line.contains(text); });
    }
};

} // namespace talmo::test
