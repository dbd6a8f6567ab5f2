#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Completion.h"

#include <functional>
#include <memory>

namespace talmo {

/// A cleanup whose edit by the language model can be given up for the local text while it runs. An edit that fails
/// falls back to the local text as well. Main thread.
class InterruptibleCleanupService final : public CleanupService {
public:
    /// `onGivenUp`: called when nobody waits for the edit under way any more.
    explicit InterruptibleCleanupService(std::shared_ptr<CleanupService> service, std::function<void()> onGivenUp = {});

    /// While hurried, nobody waits for the language model: neither for the edit under way nor for a later one.
    void setHurried(bool isHurried);

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

private:
    struct Request {
        std::shared_ptr<CleanupService> service;
        QString transcript;
        bool aiCleanupEnabled = false;
        bool conciseTextEnabled = false;
        TextTone textTone = TextTone::Standard;
        QStringList dictionaryWords;
        /// The first text counts.
        std::shared_ptr<Completion<QString>> text = Completion<QString>::make();
    };

    static QCoro::Task<void> edit(std::shared_ptr<Request> request);
    static QCoro::Task<void> formatLocally(std::shared_ptr<Request> request);

    std::shared_ptr<CleanupService> m_service;
    std::function<void()> m_onGivenUp;
    std::weak_ptr<Request> m_underway;
    bool m_isHurried = false;
};

} // namespace talmo
