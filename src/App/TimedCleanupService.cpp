#include "App/TimedCleanupService.h"

#include <utility>

namespace talmo {

TimedCleanupService::TimedCleanupService(Parts parts)
    : m_parts(std::move(parts))
{
}

QCoro::Task<QString> TimedCleanupService::cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled,
                                                  TextTone textTone, QStringList dictionaryWords)
{
    auto cleaning =
        m_parts.service->cleanup(transcript, aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords);
    const QString editor = aiCleanupEnabled ? m_parts.editor() : QString();
    return editor.isEmpty() ? std::move(cleaning) : timed(m_parts, editor, std::move(cleaning));
}

QCoro::Task<QString> TimedCleanupService::timed(Parts parts, QString editor, QCoro::Task<QString> cleaning)
{
    const Instant begin = parts.clock->now();
    const QString text = co_await cleaning;
    parts.onEdited(editor, parts.clock->now() - begin);
    co_return text;
}

} // namespace talmo
