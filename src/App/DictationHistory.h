#pragma once

#include "App/Services/PipelineServices.h"
#include "Insertion/FocusedField.h"
#include "Settings/DictationOptions.h"

#include <QStringList>

#include <memory>

namespace talmo {

/// The last dictations, while the user wants them kept. In memory only; switching it off empties it. Main thread.
class DictationHistory final : public Observable {
    Q_OBJECT

public:
    static constexpr qsizetype mostTexts = 50;

    explicit DictationHistory(std::shared_ptr<DictationOptions> options);

    /// Newest first.
    const QStringList &texts() const { return m_texts; }
    bool isOn() const { return m_options->isOn(DictationOption::KeepHistory); }
    /// Does nothing while it is off.
    void add(const QString &text);
    void clear();

private:
    std::shared_ptr<DictationOptions> m_options;
    QStringList m_texts;
};

/// Adds what is inserted to the history, also if no window took it, but nothing that went into a field which declares
/// itself a password field, whether or not pasting there is prevented. Main thread.
class RememberedInsertionService final : public TextInsertionService {
public:
    RememberedInsertionService(std::shared_ptr<TextInsertionService> service, std::shared_ptr<FocusedField> field,
                               std::shared_ptr<DictationHistory> history);

    QCoro::Task<void> insert(QString text) override;

private:
    static QCoro::Task<void> insertAndAdd(std::shared_ptr<TextInsertionService> service, QFuture<bool> isPassword,
                                          std::shared_ptr<DictationHistory> history, QString text);
    static QCoro::Task<void> addUnlessPassword(QFuture<bool> isPassword, std::shared_ptr<DictationHistory> history,
                                               QString text);

    std::shared_ptr<TextInsertionService> m_service;
    std::shared_ptr<FocusedField> m_field;
    std::shared_ptr<DictationHistory> m_history;
};

} // namespace talmo
