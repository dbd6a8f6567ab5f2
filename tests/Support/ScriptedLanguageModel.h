#pragma once

#include "Base/Completion.h"
#include "Cleanup/LanguageModel.h"

#include <QThread>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace talmo::test {

/// A language model that answers as the test tells it and records its requests. Thread-safe.
class ScriptedLanguageModel final : public LanguageModel {
public:
    struct Request {
        QString instructions;
        QString prompt;
        GenerationOptions options;
        /// The number of the session, from 1.
        int session = 0;
        QThread *thread = nullptr;
    };

    std::optional<UnavailableReason> reason;
    /// How to answer; by default the text between the prompt's tags in upper case.
    std::function<QFuture<QString>(const Request &)> onRequest = [](const Request &request) {
        return makeReadyFuture(request.prompt.mid(12, request.prompt.size() - 25).toUpper());
    };

    std::vector<Request> requests() const
    {
        const std::lock_guard lock(m_mutex);
        return m_requests;
    }

    std::optional<UnavailableReason> unavailableReason() const override { return reason; }
    std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) override
    {
        return std::make_shared<Session>(*this, instructions, ++m_sessions);
    }

private:
    class Session final : public LanguageModelSession {
    public:
        Session(ScriptedLanguageModel &model, QString instructions, int number)
            : m_model(model),
              m_instructions(std::move(instructions)),
              m_number(number)
        {
        }
        QFuture<QString> respond(const QString &prompt, const GenerationOptions &options) override
        {
            const Request request{m_instructions, prompt, options, m_number, QThread::currentThread()};
            {
                const std::lock_guard lock(m_model.m_mutex);
                m_model.m_requests.push_back(request);
            }
            return m_model.onRequest(request);
        }

    private:
        ScriptedLanguageModel &m_model;
        QString m_instructions;
        int m_number;
    };

    mutable std::mutex m_mutex;
    std::vector<Request> m_requests;
    std::atomic<int> m_sessions = 0;
};

} // namespace talmo::test
