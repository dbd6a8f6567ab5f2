#pragma once

#include "Base/Completion.h"
#include "Insertion/FocusedField.h"

#include <memory>
#include <vector>

namespace talmo::test {

/// A field that answers when the test does.
class FakeFocusedField final : public FocusedField {
public:
    std::shared_ptr<Completion<bool>> answer = Completion<bool>::make();
    /// One for each question.
    std::vector<Duration> limits;
    QFuture<bool> isPassword(Duration limit) override
    {
        limits.push_back(limit);
        return answer->future();
    }
};

} // namespace talmo::test
