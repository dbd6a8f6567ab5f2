#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Completion.h"

#include <functional>
#include <memory>

namespace talmo {

/// A cleanup whose language-model edit can be abandoned, while it runs, for local formatting. An edit that fails falls
/// back to local formatting as well. Main thread.
class InterruptibleCleanupService final : public CleanupService {
public:
    /// `onGivenUp`: called when the current edit is abandoned.
    explicit InterruptibleCleanupService(std::shared_ptr<CleanupService> service, std::function<void()> onGivenUp = {});

    /// While hurried, it does not wait for the language model, neither for the current edit nor for later ones.
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
        /// Finished by whichever text is ready first.
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
