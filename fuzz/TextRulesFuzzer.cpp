// Transcripts of arbitrary code units, including lone surrogates: nothing may crash, and what the rules guarantee must
// hold.

#include "Base/Text.h"
#include "Cleanup/LocalFormatting.h"
#include "Cleanup/OutputSanitizer.h"

#include <cstdint>
#include <cstdlib>

using namespace talmo;

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void checkSplitting(const QString &text)
{
    const auto segments = splitIntoSegments(text);
    for (std::size_t index = 0; index < segments.size(); ++index) {
        const auto &segment = segments[index];
        require(!segment.text.isEmpty());
        require(segment.text == Text::trimSpaces(segment.text));
        require(!segment.text.contains(QLatin1String("new line"), Qt::CaseInsensitive));
        require(!segment.text.contains(QLatin1String("new paragraph"), Qt::CaseInsensitive));
        require(index + 1 == segments.size() || !segment.separator.isEmpty());
    }
}

void checkFormatting(const QString &text)
{
    const QString formatted = formatLocally(text);
    require(formatted.isEmpty() == Text::trimWhitespaceAndNewlines(text).isEmpty());
    require(formatted.isEmpty() || QStringView(u".!?").contains(formatted.back()));
    require(formatLocally(formatted) == formatted);
}

void checkSanitising(const QString &text)
{
    const QString sanitised = sanitize(text);
    require(text.contains(sanitised)); // Text is only removed.
    require(sanitised == Text::trimWhitespaceAndNewlines(sanitised));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // The first byte chooses between UTF-8 and raw UTF-16, so that both commands and nonsense are found quickly.
    if (size == 0) {
        return 0;
    }
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1));
    const QString text = data[0] % 2 == 0
                             ? QString::fromUtf8(bytes)
                             : QString(reinterpret_cast<const QChar *>(bytes.constData()), bytes.size() / 2);
    checkSplitting(text);
    checkFormatting(text);
    const BulletRequest request = detectBulletRequest(text);
    require(request.text == Text::trimWhitespaceAndNewlines(request.text));
    checkSanitising(text);
    return 0;
}
