#pragma once

#include "App/Services/PipelineServices.h"
#include "Insertion/TextCommitter.h"

#include <QString>

#include <memory>

namespace talmo {

/// Gives each text to the field in front directly, or, if that cannot take it, to the other service. Main thread.
class CommittingInsertionService final : public TextInsertionService {
public:
    CommittingInsertionService(std::shared_ptr<TextCommitter> committer,
                               std::shared_ptr<TextInsertionService> otherwise);

    QCoro::Task<void> insert(QString text) override;

private:
    static QCoro::Task<void> commitOrInsert(std::shared_ptr<TextCommitter> committer,
                                            std::shared_ptr<TextInsertionService> otherwise, QString text);

    std::shared_ptr<TextCommitter> m_committer;
    std::shared_ptr<TextInsertionService> m_otherwise;
};

} // namespace talmo
