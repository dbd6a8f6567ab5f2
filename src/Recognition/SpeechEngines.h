#pragma once

#include "Base/Clock.h"
#include "Base/Observable.h"
#include "Base/SerialExecutor.h"
#include "Recognition/ChosenSpeechPlatform.h"
#include "Recognition/InstalledModels.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/PocketSphinx/PocketSphinxPlatform.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

class QFileSystemWatcher;

namespace talmo {

/// The recognisers of this machine: the embedded one, which is always there, and neural ones with the models that the
/// user has installed, which come first. Models that appear and go are noticed. Announces changes. Main thread.
class SpeechEngines final : public Observable {
    Q_OBJECT

public:
    /// What is chosen instead of a model's name.
    static const QString automaticChoice;
    static const QString embeddedChoice;

    struct Configuration {
        InstalledModels::Configuration models;
        ModelCatalogue catalogue;
        /// The name of a model that goes before all others of its language, or one of the two above.
        QString choice;
        /// Called where a language has no recogniser here, on any thread; none to leave such languages alone.
        std::function<QFuture<void>(const QString &locale)> install;
    };

    /// `executor`: the thread on which everything is decoded. `microphoneName`: asked on that thread; none
    /// where nobody speaks into a microphone. What is wrong
    /// with a model or the library is said in the log, and the rest goes on without it.
    SpeechEngines(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                  std::function<QString()> microphoneName, Configuration configuration);
    ~SpeechEngines() override;

    const std::shared_ptr<ChosenSpeechPlatform> &platform() const { return m_platform; }
    const std::shared_ptr<PocketSphinxPlatform> &embedded() const { return m_embedded; }
    /// The models found when it was looked last, by name; which of them can be used, and why not.
    const std::vector<InstalledModel> &models() const { return m_models; }
    /// The usable ones, those first that are used first.
    std::vector<std::shared_ptr<SherpaPlatform>> neural() const;

    /// Looks which models there are, and finishes when it is known which can be used.
    QFuture<void> lookForModels();
    /// Finishes when what was begun last is known.
    QFuture<void> modelsChecked() const { return m_lookedFor; }

    QString choice() const { return m_configuration.choice; }
    /// From the next recording on.
    void choose(const QString &choice);

    /// Loads what a recording in that language would need. Returns at once.
    void warmUp(const QString &locale);
    /// The user's own words, from the next recording on.
    void setWords(const QStringList &words);
    /// Somebody dictates, or has just done so: the models stay for ten minutes from now.
    void noteUse();

    /// Where the user says how words sound: lines such as "Nguyen = win".
    static QString pronunciationsPath();

private:
    void watchFolder();
    void look();
    void takeModels(std::vector<InstalledModel> models);
    void arrange();
    void unload();
    static QCoro::Task<void> unloadLater(std::function<void()> unload, std::shared_ptr<Clock> clock,
                                         std::stop_token stop);

    Configuration m_configuration;
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<PocketSphinxPlatform> m_embedded;
    std::shared_ptr<SpeechPlatform> m_missing;
    std::vector<InstalledModel> m_models;
    /// A thread apart, so that nobody who dictates meanwhile waits for it.
    std::shared_ptr<SerialExecutor> m_checker;
    std::shared_ptr<ChosenSpeechPlatform> m_platform;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    QStringList m_words;
    QFuture<void> m_lookedFor;
    /// While it looks.
    std::shared_ptr<Completion<void>> m_looking;
    bool m_looksAgain = false;
    std::stop_source m_idle;
};

} // namespace talmo
