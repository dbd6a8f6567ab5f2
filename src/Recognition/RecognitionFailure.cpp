#include "Recognition/RecognitionFailure.h"

#include "Base/Log.h"

namespace talmo {

RecognitionFailure::RecognitionFailure(const QString &detail)
    : DetailedError(
          QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Speech recognition failed. Try again; if it fails again, "
                                                    "choose another recogniser in the settings.")),
          detail)
{
    generalLog().error("speech recognition failed: %@", {detail});
}

} // namespace talmo
