#include "Platform/Linux/Session/ClipboardHints.h"

#include <algorithm>

namespace talmo {

QList<PasteboardRepresentation> historyHints()
{
    // Klipper and current versions of CopyQ read the first; CopyQ before version 8 reads only the second.
    const QString passwordManagerHint = QStringLiteral("x-kde-passwordManagerHint");
    const QString hidden = QStringLiteral("application/x-copyq-hidden");
    return {{passwordManagerHint, "secret", passwordManagerHint, 8}, {hidden, "1", hidden, 8}};
}

bool isSecret(const QList<PasteboardRepresentation> &representations)
{
    const auto hints = historyHints();
    return std::any_of(representations.cbegin(), representations.cend(), [&hints](const auto &offered) {
        return std::any_of(hints.cbegin(), hints.cend(), [&offered](const auto &hint) {
            return offered.type == hint.type && offered.data == hint.data;
        });
    });
}

} // namespace talmo
