#pragma once

#include "Recognition/EnginePlatform.h"
#include "Recognition/Sherpa/SherpaLibrary.h"

#include <QStringList>

#include <memory>

namespace talmo {

/// The neural recogniser, with a model that is on the disk.
class SherpaPlatform final : public EnginePlatform {
public:
    /// `executor`: the thread on which everything is decoded. `libraryPath`: empty to look in the usual
    /// places. Throws Error when the library or the model will not do, as far as can be told without loading it.
    SherpaPlatform(std::shared_ptr<SerialExecutor> executor, const QString &libraryPath, const QString &modelFolder);
    ~SherpaPlatform() override;

    QFuture<std::optional<QString>> supportedLocale(const QString &locale) override;
    QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber) override;

    /// Load the model ahead of a recording that may come, and give its memory back. Any thread, return at once.
    void warmUp();
    void unload();

    /// The user's own words, from the next recording on: written as the user spells them, and listened for where the
    /// model can. Any thread.
    void setWords(const QStringList &words);

    /// Whether the language that a locale names is one of the model's.
    bool speaks(const QString &locale) const;
    /// Where the library lies.
    QString libraryPath() const;
    /// Library and model, for people.
    QString description() const;

protected:
    bool isInstalled() const override;
    MakeRecordingDecoder decoderMaker() override;

private:
    class LoadedModel;

    SherpaModel m_model;
    std::shared_ptr<LoadedModel> m_loaded;
};

} // namespace talmo
