#pragma once

#include "Base/SerialExecutor.h"
#include "Settings/WordPronunciations.h"

#include <QHash>

#include <functional>
#include <memory>

namespace talmo {

/// Keeps pronunciations in the file that the recogniser reads.
class WordPronunciationsModel final : public WordPronunciations {
public:
    /// `writer`: the thread that may block on the disk. `onWritten` is called on the main thread.
    WordPronunciationsModel(QString path, std::shared_ptr<SerialExecutor> writer,
                            std::shared_ptr<SerialExecutor> mainExecutor, std::function<void()> onWritten);

    void refresh() override;
    QString of(const QString &word) const override;
    void set(const QString &word, const QString &soundsLike) override;

private:
    QString m_path;
    std::shared_ptr<SerialExecutor> m_writer;
    std::shared_ptr<SerialExecutor> m_mainExecutor;
    std::function<void()> m_onWritten;
    QHash<QString, QString> m_sounds;
};

} // namespace talmo
