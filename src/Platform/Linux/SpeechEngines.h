#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Platform/Linux/ChosenSpeechPlatform.h"
#include "Platform/Linux/PocketSphinxPlatform.h"
#include "Platform/Linux/SherpaPlatform.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace talmo {

/// The recognisers of this machine: the embedded one, which is always there, and neural ones with models that the user
/// has installed, which come first. Main thread.
class SpeechEngines {
public:
    struct Configuration {
        /// Where models lie, each in a folder of its own.
        QString modelsFolder;
        /// Of the neural recogniser; empty to look in the usual places.
        QString neuralLibrary;
        /// Use the embedded recogniser whatever is installed.
        bool isEmbeddedOnly = false;
        SherpaPlatform::Check checkModel;
    };

    /// `executor`: the thread on which everything is decoded. `microphoneName`: asked on that thread. What is wrong
    /// with a model or the library is said in the log, and the rest goes on without it.
    SpeechEngines(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                  std::function<QString()> microphoneName, const Configuration &configuration);

    const std::shared_ptr<SpeechPlatform> &platform() const { return m_platform; }
    const std::shared_ptr<PocketSphinxPlatform> &embedded() const { return m_embedded; }
    const std::vector<std::shared_ptr<SherpaPlatform>> &neural() const { return m_neural; }

    /// Finishes when it is known which models can be used.
    QFuture<void> modelsChecked();
    /// Loads what a recording in that language would need. Returns at once.
    void warmUp(const QString &locale);
    /// The user's own words, from the next recording on.
    void setWords(const QStringList &words);
    /// Somebody dictates, or has just done so: the models stay for ten minutes from now.
    void noteUse();

    /// Where the user says how words sound: lines such as "Nguyen = win".
    static QString pronunciationsPath();
    static QString standardModelsFolder();

private:
    void findModels(const Configuration &configuration);
    static QCoro::Task<void> unloadLater(std::function<void()> unload, std::shared_ptr<Clock> clock,
                                         std::stop_token stop);

    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<PocketSphinxPlatform> m_embedded;
    std::vector<std::shared_ptr<SherpaPlatform>> m_neural;
    /// A thread apart, so that nobody who dictates meanwhile waits for it; null where there are no models.
    std::shared_ptr<SerialExecutor> m_checker;
    std::shared_ptr<SpeechPlatform> m_platform;
    std::stop_source m_idle;
};

} // namespace talmo
