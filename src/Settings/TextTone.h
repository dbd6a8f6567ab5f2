#pragma once

#include "App/Services/PipelineServices.h"

#include <QString>

#include <array>
#include <optional>

namespace talmo {

/// All tones, in display order.
inline constexpr std::array allTextTones = {TextTone::Standard, TextTone::Professional, TextTone::Friendly,
                                            TextTone::Polite};

/// The stored form of a tone, and its inverse: nullopt if unknown.
QString rawValue(TextTone tone);
std::optional<TextTone> textToneFromRawValue(const QString &rawValue);

/// The name shown in the tone picker.
QString displayName(TextTone tone);

} // namespace talmo
