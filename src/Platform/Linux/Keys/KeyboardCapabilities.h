#pragma once

#include <QString>

#include <optional>

namespace talmo {

/// What the kernel says about the attached keyboards. A laptop's own keyboard claims keys that it may not have.
namespace KeyboardCapabilities {

/// Whether any keyboard claims the key with this kernel code; nullopt if no keyboard is known. `folder` has the input
/// devices.
std::optional<bool> anyKeyboardHas(int kernelCode, const QString &folder = QStringLiteral("/sys/class/input"));

} // namespace KeyboardCapabilities

} // namespace talmo
