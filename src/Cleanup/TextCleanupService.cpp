#include "Cleanup/TextCleanupService.h"

#include "Base/Task.h"
#include "Cleanup/LocalFormatting.h"

#include <utility>

namespace talmo {

TextCleanupService::TextCleanupService(std::shared_ptr<SerialExecutor> executor)
    : m_executor(std::move(executor))
{
}

QCoro::Task<QString> TextCleanupService::cleanup(QString transcript, bool /*aiCleanupEnabled*/,
                                                 bool /*conciseTextEnabled*/, TextTone /*textTone*/,
                                                 QStringList /*dictionaryWords*/)
{
    return await<QString>(m_executor->call([transcript] { return cleanTranscript(transcript); }));
}

QString TextCleanupService::cleanTranscript(const QString &transcript)
{
    const auto segments = splitIntoSegments(transcript);
    if (segments.empty()) {
        return transcript;
    }
    std::vector<QString> cleaned;
    cleaned.reserve(segments.size());
    for (const auto &segment : segments) {
        cleaned.push_back(cleanSegment(segment.text));
    }
    return joinSegments(cleaned, segments);
}

QString TextCleanupService::cleanSegment(const QString &text)
{
    const BulletRequest request = detectBulletRequest(text);
    return request.text.isEmpty() ? QString() : formatLocally(request.text);
}

} // namespace talmo
