#pragma once

#include "App/Services/PipelineServices.h"

#include <QString>

#include <array>
#include <optional>

namespace talmo {

/// Every tone, in the order in which it is offered.
inline constexpr std::array allTextTones = {TextTone::Standard, TextTone::Professional, TextTone::Friendly,
                                            TextTone::Polite};

/// The form in which a tone is stored, and the tone for it; none for an unknown one.
QString rawValue(TextTone tone);
std::optional<TextTone> textToneFromRawValue(const QString &rawValue);

/// The name in a tone picker.
QString displayName(TextTone tone);

} // namespace talmo
