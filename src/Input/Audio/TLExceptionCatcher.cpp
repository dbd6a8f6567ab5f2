#include "Input/Audio/TLExceptionCatcher.h"

#include "Base/Application.h"
#include "Base/Error.h"

namespace talmo {

bool TLExceptionCatcher::run(const std::function<void()> &work, std::optional<CaughtAudioException> *error)
{
    try {
        work();
        return true;
    } catch (const PlatformException &exception) {
        if (error != nullptr) {
            CaughtAudioException caught;
            caught.domain = bundleIdentifier() + QStringLiteral(".audio.exception");
            caught.code = -1;
            caught.userInfo[CaughtAudioException::localizedDescriptionKey()] =
                exception.reason().isEmpty() ? QStringLiteral("Unknown audio engine exception") : exception.reason();
            caught.userInfo[CaughtAudioException::exceptionNameKey()] =
                exception.name().isEmpty() ? QStringLiteral("unknown") : exception.name();
            *error = caught;
        }
        return false;
    }
}

} // namespace talmo
