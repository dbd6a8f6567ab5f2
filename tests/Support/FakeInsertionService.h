#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Completion.h"
#include "Base/Task.h"

#include <vector>

namespace talmo::test {

/// Records the texts; every insertion ends as `outcome` does.
class FakeInsertionService final : public TextInsertionService {
public:
    std::vector<QString> inserted;
    QFuture<void> outcome = makeReadyFuture();
    QCoro::Task<void> insert(QString text) override
    {
        inserted.push_back(text);
        return await<void>(outcome);
    }
};

} // namespace talmo::test
