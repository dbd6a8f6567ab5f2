#include "Cleanup/TextCleanupService.h"

#include "Base/Task.h"
#include "Base/Text.h"
#include "Cleanup/CleanupInstructions.h"
#include "Cleanup/LocalFormatting.h"
#include "Cleanup/OutputSanitizer.h"

#include <utility>
#include <vector>

namespace talmo {

namespace {

struct CleanupSettings {
    bool aiCleanupEnabled;
    bool conciseTextEnabled;
    TextTone textTone;
    QStringList dictionaryWords;
};

/// The text as edited by the model, sanitised; empty on any failure.
QCoro::Task<QString> editedByModel(std::shared_ptr<LanguageModel> model, BulletRequest request,
                                   CleanupSettings settings)
{
    try {
        const QString instructions = buildInstructions(settings.dictionaryWords, request.isBulletList,
                                                       settings.conciseTextEnabled, settings.textTone);
        // A new session every time, so that no dictation can influence another.
        const auto session = model->makeSession(instructions);
        GenerationOptions options;
        options.maximumResponseTokens = responseLimit(Text::characterCount(request.text));
        const auto response = session->respond(transcriptPrompt(request.text), options);
        const QString answer = co_await response;
        co_return sanitize(answer);
    } catch (...) { // NOLINT(bugprone-empty-catch): every failure falls back to local formatting.
    }
    co_return QString();
}

QCoro::Task<QString> cleanOneSegment(std::shared_ptr<LanguageModel> model, QString text, CleanupSettings settings)
{
    const BulletRequest request = detectBulletRequest(text);
    if (request.text.isEmpty()) {
        co_return QString();
    }
    if (!settings.aiCleanupEnabled || model->unavailableReason()) {
        co_return formatLocally(request.text);
    }
    const QString edited = co_await editedByModel(model, request, settings);
    co_return edited.isEmpty() ? formatLocally(request.text) : edited;
}

/// Cleans all segments concurrently, each in its own conversation; results keep their order.
QCoro::Task<QString> cleanTranscript(std::shared_ptr<LanguageModel> model, QString transcript, CleanupSettings settings)
{
    const auto segments = splitIntoSegments(transcript);
    if (segments.empty()) {
        co_return transcript;
    }
    std::vector<QCoro::Task<QString>> tasks;
    tasks.reserve(segments.size());
    for (const auto &segment : segments) {
        tasks.push_back(cleanOneSegment(model, segment.text, settings));
    }
    std::vector<QString> cleaned;
    cleaned.reserve(segments.size());
    for (auto &task : tasks) {
        cleaned.push_back(co_await task);
    }
    co_return joinSegments(cleaned, segments);
}

QString messageFor(UnavailableReason reason)
{
    switch (reason) {
    case UnavailableReason::DeviceNotEligible:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "This Mac doesn't support Apple Intelligence."));
    case UnavailableReason::AppleIntelligenceNotEnabled:
        return QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "Apple Intelligence isn't turned on. Enable it in System Settings > Apple Intelligence & "
                     "Siri to use AI cleanup."));
    case UnavailableReason::ModelNotReady:
        return QStringLiteral(
            QT_TRANSLATE_NOOP("Talmo", "The on-device language model is still preparing. Try again shortly."));
    case UnavailableReason::Other:
        break;
    }
    return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The on-device language model isn't available right now."));
}

} // namespace

qsizetype responseLimit(qsizetype characterCount)
{
    constexpr qsizetype smallestLimit = 64;
    constexpr qsizetype longestWithSmallestLimit = 127;
    return characterCount > longestWithSmallestLimit ? characterCount / 2 : smallestLimit;
}

TextCleanupService::TextCleanupService(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<LanguageModel> model)
    : m_executor(std::move(executor)),
      m_model(std::move(model))
{
}

std::optional<QString> TextCleanupService::unavailabilityMessage() const
{
    const auto reason = m_model->unavailableReason();
    return reason ? std::optional(messageFor(*reason)) : std::nullopt;
}

QCoro::Task<QString> TextCleanupService::cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled,
                                                 TextTone textTone, QStringList dictionaryWords)
{
    const CleanupSettings settings{aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords};
    return await<QString>(m_executor->run<QString>(
        [model = m_model, transcript, settings] { return cleanTranscript(model, transcript, settings); }));
}

QCoro::Task<QString> TextCleanupService::cleanSegment(QString text, bool aiCleanupEnabled, bool conciseTextEnabled,
                                                      TextTone textTone, QStringList dictionaryWords) const
{
    return cleanOneSegment(m_model, text, {aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords});
}

} // namespace talmo
