#include "App/TidyEndCleanupService.h"

#include <utility>

namespace talmo {

QString withoutOpenEnd(const QString &transcript)
{
    static const QString openMarks = QStringLiteral(",;:\u2026\u2013\u2014-\u3001\uFF0C\uFF1B\uFF1A");
    qsizetype end = transcript.size();
    while (end > 0 && (openMarks.contains(transcript.at(end - 1)) || transcript.at(end - 1).isSpace())) {
        --end;
    }
    return end > 0 ? transcript.left(end) : transcript;
}

TidyEndCleanupService::TidyEndCleanupService(std::shared_ptr<CleanupService> service)
    : m_service(std::move(service))
{
}

QCoro::Task<QString> TidyEndCleanupService::cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled,
                                                    TextTone textTone, QStringList dictionaryWords)
{
    return m_service->cleanup(withoutOpenEnd(transcript), aiCleanupEnabled, conciseTextEnabled, textTone,
                              std::move(dictionaryWords));
}

} // namespace talmo
