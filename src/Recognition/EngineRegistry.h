#pragma once

#include "Base/Clock.h"
#include "Base/Observable.h"
#include "Base/SerialExecutor.h"
#include "Recognition/EngineSpeechPlatform.h"
#include "Recognition/InstalledModels.h"
#include "Recognition/Models/ModelCatalogue.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

class QFileSystemWatcher;

namespace talmo {

/// The engines that can be used now: the embedded one, and one for each usable model of the user's. Follows the folders
/// of models and libraries. Announces changes. Main thread.
class EngineRegistry final : public Observable {
    Q_OBJECT

public:
    /// What the user may choose instead of a model's name.
    static const QString automaticChoice;
    static const QString embeddedChoice;

    struct Configuration {
        InstalledModels::Configuration models;
        ModelCatalogue catalogue;
        /// A RecogniserChoice. Its `final` is the name of a model that is preferred to all others of its language, or
        /// one of the two above.
        QString choice;
        /// Provides an engine for a language that has none, on any thread. Null to do nothing about such languages.
        std::function<QFuture<void>(const QString &locale)> install;
        /// Returns freed memory to the system; null if the allocator does that by itself.
        std::function<void()> releaseMemory;
    };

    /// `executor`: the decoder thread. A broken model or missing library is logged and skipped.
    EngineRegistry(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock, Configuration configuration);
    ~EngineRegistry() override;

    const std::shared_ptr<EngineSpeechPlatform> &platform() const { return m_platform; }
    /// As of the last scan, by name: whether each can be used, or why not.
    const std::vector<InstalledModel> &models() const { return m_models; }
    /// In the order in which they are considered for a recording.
    std::vector<std::shared_ptr<SpeechEngine>> engines() const;

    /// Rescans the models folder; finishes once every model has been checked.
    QFuture<void> lookForModels();
    /// Finishes when the scan under way does.
    QFuture<void> modelsChecked() const { return m_lookedFor; }

    QString choice() const { return m_configuration.choice; }
    /// Takes effect with the next recording.
    void choose(const QString &choice);

    /// Loads what a recording in that language would need. Returns at once.
    void warmUp(const QString &locale);
    /// The user's own words. Takes effect with the next recording.
    void setWords(const QStringList &words);
    /// Marks the models as used; they are unloaded after ten idle minutes.
    void noteUse();

    /// The user's file of pronunciations: lines such as "Nguyen = win".
    static QString pronunciationsPath();

private:
    void watchFolders();
    void look();
    void takeModels(std::vector<InstalledModel> models);
    std::vector<std::shared_ptr<SpeechEngine>>
    withLiveText(const std::vector<std::shared_ptr<SpeechEngine>> &engines) const;
    void arrange();
    void publishVocabulary();
    void unload();
    static QCoro::Task<void> unloadLater(std::function<void()> unload, std::shared_ptr<Clock> clock,
                                         std::stop_token stop);

    Configuration m_configuration;
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    std::vector<InstalledModel> m_models;
    /// Checking a model may take seconds, and the decoder thread has to stay free for dictation.
    std::shared_ptr<SerialExecutor> m_checker;
    std::shared_ptr<EngineSpeechPlatform> m_platform;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    QStringList m_words;
    QFuture<void> m_lookedFor;
    /// While it looks.
    std::shared_ptr<Completion<void>> m_looking;
    bool m_looksAgain = false;
    std::stop_source m_idle;
};

} // namespace talmo
