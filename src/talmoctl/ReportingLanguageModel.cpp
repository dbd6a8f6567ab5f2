#include "talmoctl/ReportingLanguageModel.h"

#include "Base/Error.h"
#include "Cleanup/OutputSanitizer.h"

#include <utility>

namespace talmo::ctl {

class ReportingLanguageModel::Session final : public LanguageModelSession {
public:
    Session(std::shared_ptr<LanguageModelSession> session, std::shared_ptr<Notes> notes)
        : m_session(std::move(session)),
          m_notes(std::move(notes))
    {
    }

    QFuture<QString> respond(const QString &prompt, const GenerationOptions &options) override
    {
        return m_session->respond(prompt, options).then([notes = m_notes](const QFuture<QString> &answer) {
            return noted(*notes, answer);
        });
    }

private:
    static QString noted(Notes &notes, const QFuture<QString> &answer)
    {
        try {
            QString text = answer.result();
            note(notes, sanitize(text).isEmpty() ? QStringLiteral("The model's answer was empty.") : QString());
            return text;
        } catch (...) {
            note(notes, localizedDescription(std::current_exception()));
            throw;
        }
    }

    static void note(Notes &notes, const QString &problem)
    {
        const std::lock_guard lock(notes.mutex);
        ++notes.report.requests;
        notes.report.edited += problem.isEmpty() ? 1 : 0;
        if (notes.report.problem.isEmpty()) {
            notes.report.problem = problem;
        }
    }

    std::shared_ptr<LanguageModelSession> m_session;
    std::shared_ptr<Notes> m_notes;
};

ReportingLanguageModel::ReportingLanguageModel(std::shared_ptr<LanguageModel> model)
    : m_model(std::move(model))
{
}

ReportingLanguageModel::Report ReportingLanguageModel::report() const
{
    const std::lock_guard lock(m_notes->mutex);
    return m_notes->report;
}

std::optional<UnavailableReason> ReportingLanguageModel::unavailableReason() const
{
    return m_model->unavailableReason();
}

std::shared_ptr<LanguageModelSession> ReportingLanguageModel::makeSession(const QString &instructions)
{
    return std::make_shared<Session>(m_model->makeSession(instructions), m_notes);
}

} // namespace talmo::ctl
