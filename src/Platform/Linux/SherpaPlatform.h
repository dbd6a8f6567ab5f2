#pragma once

#include "Base/SerialExecutor.h"
#include "Platform/Linux/SherpaLibrary.h"
#include "Speech/SpeechPlatform.h"

#include <functional>
#include <memory>

namespace talmo {

/// The neural recogniser, with a model that the user has put on the disk.
class SherpaPlatform final : public SpeechPlatform {
public:
    /// Throws Error when the model must not be loaded. Called with the library's file and the model's folder.
    using Check = std::function<void(const QString &libraryPath, const QString &modelFolder)>;

    /// `executor`: the thread on which everything is decoded. `libraryPath`: empty to look in the usual
    /// places. Throws Error when the library or the model will not do.
    SherpaPlatform(std::shared_ptr<SerialExecutor> executor, const QString &libraryPath, const QString &modelFolder,
                   Check check);
    ~SherpaPlatform() override;

    bool isAvailable() const override { return true; }
    QFuture<std::optional<QString>> supportedLocale(const QString &locale) override;
    std::shared_ptr<SpeechTranscriber> makeTranscriber(const QString &supportedLocale,
                                                       TranscriberConfiguration configuration) override;
    QFuture<AssetStatus> assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    QFuture<std::optional<AudioFormat>>
    bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    std::shared_ptr<SpeechAnalyzer> makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber) override;

    /// Has the model checked, which takes a while; until that is done, and if it will not do, it counts as not
    /// installed, so that nobody waits for it.
    void check(SerialExecutor &executor);

    /// Load the model ahead of a recording that may come, and give its memory back. Any thread, return at once.
    void warmUp();
    void unload();

    /// Whether the language that a locale names is the model's.
    bool speaks(const QString &locale) const;
    /// The model has been checked, and could be loaded whenever it was tried. Any thread.
    bool isUsable() const;
    /// Library and model, for people.
    QString description() const;

private:
    class LoadedModel;

    std::shared_ptr<SerialExecutor> m_executor;
    SherpaModel m_model;
    std::shared_ptr<LoadedModel> m_loaded;
};

} // namespace talmo
