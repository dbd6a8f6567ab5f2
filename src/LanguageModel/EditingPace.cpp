#include "LanguageModel/EditingPace.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

/// Keeps the occasional slow edit on a fast machine, such as the first after loading the model, from adding up.
constexpr std::size_t remembered = 10;

} // namespace

void EditingPace::note(const QString &model, Duration duration)
{
    if (std::exchange(m_model, model) != model) {
        m_wereSlow.clear();
    }
    m_wereSlow.push_back(duration > slowEdit);
    if (m_wereSlow.size() > remembered) {
        m_wereSlow.pop_front();
    }
}

bool EditingPace::isSlow(const QString &model) const
{
    return model == m_model && std::count(m_wereSlow.begin(), m_wereSlow.end(), true) >= slowEditsUntilAdvice;
}

} // namespace talmo
