#include "App/TalmoState.h"

namespace talmo {

QString name(const TalmoState &state)
{
    switch (state.which()) {
    case TalmoState::Case::Idle:
        return QStringLiteral("idle");
    case TalmoState::Case::Recording:
        return QStringLiteral("recording");
    case TalmoState::Case::Processing:
        return QStringLiteral("processing");
    case TalmoState::Case::Inserting:
        return QStringLiteral("inserting");
    case TalmoState::Case::Error:
        break;
    }
    return QStringLiteral("error");
}

} // namespace talmo
