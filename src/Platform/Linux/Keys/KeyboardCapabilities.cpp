#include "Platform/Linux/Keys/KeyboardCapabilities.h"

#include <QDir>
#include <QFile>
#include <QStringList>

namespace talmo::KeyboardCapabilities {

namespace {

/// Devices that lack these, such as power buttons and headsets, are not keyboards.
constexpr int keyEnter = 28;
constexpr int keyA = 30;

/// Words of 64 bits in hexadecimal, the highest first.
bool has(const QStringList &words, int bit)
{
    constexpr int wordBits = 64;
    const qsizetype index = words.size() - 1 - bit / wordBits;
    const quint64 word = index >= 0 ? words[index].toULongLong(nullptr, 16) : 0;
    return (word >> (bit % wordBits) & 1) != 0;
}

} // namespace

std::optional<bool> anyKeyboardHas(int kernelCode, const QString &folder)
{
    std::optional<bool> answer;
    const QDir devices(folder);
    for (const auto &device : devices.entryList({QStringLiteral("input*")}, QDir::Dirs)) {
        QFile file(devices.filePath(device + QStringLiteral("/capabilities/key")));
        if (!file.open(QFile::ReadOnly)) {
            continue;
        }
        const auto words = QString::fromLatin1(file.readAll()).simplified().split(QLatin1Char(' '));
        if (has(words, keyEnter) && has(words, keyA)) {
            answer = answer.value_or(false) || has(words, kernelCode);
        }
    }
    return answer;
}

} // namespace talmo::KeyboardCapabilities
