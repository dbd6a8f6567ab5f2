#pragma once

#include "Cleanup/LanguageModel.h"

#include <QString>

#include <memory>
#include <mutex>

namespace talmo::ctl {

/// Notes what became of the requests to a language model, since a cleanup does not tell.
class ReportingLanguageModel final : public LanguageModel {
public:
    struct Report {
        int requests = 0;
        int edited = 0;
        /// What went wrong first, as a sentence; empty if nothing did.
        QString problem;
    };

    explicit ReportingLanguageModel(std::shared_ptr<LanguageModel> model);

    /// Of all requests that have ended. Any thread.
    Report report() const;

    std::optional<UnavailableReason> unavailableReason() const override;
    std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) override;

private:
    class Session;
    struct Notes {
        std::mutex mutex;
        Report report;
    };

    std::shared_ptr<LanguageModel> m_model;
    std::shared_ptr<Notes> m_notes = std::make_shared<Notes>();
};

} // namespace talmo::ctl
