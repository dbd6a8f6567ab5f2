#pragma once

#include "App/Services/PipelineServices.h"
#include "Insertion/CursorWatch.h"

#include <QString>

#include <functional>
#include <memory>

namespace talmo {

/// Whether a text that continues another one has to be separated from it by a space. Not at an existing line break or
/// space, after an opening bracket or quotation mark, before punctuation, or in scripts that are written without
/// spaces.
bool needsSpaceBetween(const QString &before, const QString &text);

/// Puts a space before a dictation that continues the last one, since a person who speaks two sentences expects them
/// apart. All other text is inserted as it is. Main thread.
class SpacedInsertionService final : public TextInsertionService {
public:
    /// `isOn` is called before each insertion.
    SpacedInsertionService(std::shared_ptr<TextInsertionService> service, std::shared_ptr<CursorWatch> cursor,
                           std::function<bool()> isOn);

    QCoro::Task<void> insert(QString text) override;
    /// Inserts exactly this text; the next dictation does not continue it.
    QCoro::Task<void> insertExactly(QString text);

private:
    /// What was inserted at the marked place; empty if that is not known.
    using Last = std::shared_ptr<QString>;
    static QCoro::Task<void> insertAndRemember(std::shared_ptr<TextInsertionService> service, QString text, Last last);

    std::shared_ptr<TextInsertionService> m_service;
    std::shared_ptr<CursorWatch> m_cursor;
    std::function<bool()> m_isOn;
    Last m_last = std::make_shared<QString>();
};

} // namespace talmo
