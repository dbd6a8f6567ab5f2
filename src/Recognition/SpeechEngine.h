#pragma once

#include "Recognition/RecordingDecoder.h"
#include "Recognition/Text/Pronunciation.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <utility>

namespace talmo {

/// A speech recogniser together with one model. Constructing one loads nothing. Checking a model's files and installing
/// models are functions of EngineFactory, because both happen before there is an engine.
///
/// Any thread, except where a comment says decoder thread: all recordings are decoded on that one.
class SpeechEngine {
public:
    virtual ~SpeechEngine() = default;

    /// The ID of the engine that needs no model from the user.
    static QString embeddedId() { return QStringLiteral("embedded"); }

    /// What the user's choice is stored as: "embedded", or the model's name.
    virtual QString id() const = 0;
    /// For logs and the command line: implementation, version, model.
    virtual QString description() const = 0;
    /// Language codes, such as "en"; never empty.
    virtual QStringList languages() const = 0;
    virtual bool speaks(const QString &locale) const = 0;
    /// Whether it has live text during speech without a pause.
    virtual bool isStreaming() const { return true; }
    /// Why it cannot be used now, as a sentence for users; empty if it can. Looks at the disk, never loads the model.
    virtual QString problem() const = 0;
    /// The library and model files. When one of them changes, the model has to be checked again.
    virtual QStringList files() const = 0;

    /// From now on `problem` is why it cannot be used.
    virtual void refuse(const QString &problem) = 0;

    /// Takes effect with the next recording.
    virtual void setVocabulary(const PersonalVocabulary &vocabulary) = 0;

    /// Loads the model unless it is loaded. Throws Error. Decoder thread.
    virtual std::unique_ptr<RecordingDecoder> makeDecoder(RecordingDecoder::Publish publish) = 0;
    /// The same, for a recording in one of its languages: overridden by engines that must know which.
    virtual std::unique_ptr<RecordingDecoder> makeDecoderFor(const QString & /*locale*/,
                                                             RecordingDecoder::Publish publish)
    {
        return makeDecoder(std::move(publish));
    }
    /// A decoder that recognises whatever it is given, speech or not, so that the engine's speed can be measured.
    virtual std::unique_ptr<RecordingDecoder> makeTrialDecoder(RecordingDecoder::Publish publish)
    {
        return makeDecoder(std::move(publish));
    }
    /// Loads the model ahead of a recording. Throws Error. Decoder thread.
    virtual void warmUp() = 0;
    /// The same, for a recording in one of its languages.
    virtual void warmUpFor(const QString & /*locale*/) { warmUp(); }
    /// Frees the model unless a recording is using it. Decoder thread.
    virtual void unload() = 0;
};

} // namespace talmo
