#pragma once

#include "Base/Error.h"
#include "Recognition/RecognitionFailure.h"
#include "Recognition/RecordingDecoder.h"
#include "Recognition/Sherpa/SherpaLibrary.h"
#include "Recognition/Sherpa/SherpaModel.h"
#include "Recognition/Text/ReadableText.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <utility>

namespace talmo {

/// A model in memory. Decoder thread.
class SherpaRecogniser {
public:
    /// What one recording needs.
    struct Recording {
        /// A language code, such as "en".
        QString language;
        /// As they are spoken, in lower case; ignored if the model takes none.
        QStringList hotWords;
        ReadableText text;
        RecordingDecoder::Publish publish;
    };

    virtual ~SherpaRecogniser() = default;

    /// Throws Error if the library rejects the model.
    static std::shared_ptr<SherpaRecogniser> load(std::shared_ptr<SherpaLibrary> library, const SherpaModel &model);

    /// The decoder keeps the model in memory. Throws Error.
    virtual std::unique_ptr<RecordingDecoder> makeDecoder(Recording recording) = 0;
    /// See SpeechEngine.
    virtual std::unique_ptr<RecordingDecoder> makeTrialDecoder(Recording recording)
    {
        return makeDecoder(std::move(recording));
    }
};

/// More threads hardly help a model that runs in real time.
int sherpaThreadCount();

/// Runs a call of the library, which throws exceptions of unknown types, for example if a model does not fit its
/// tokens. Throws Error.
template <typename Call>
auto sherpaGuarded(Call call)
{
    try {
        return call();
    } catch (...) {
        throw RecognitionFailure(QStringLiteral("the library threw an exception"));
    }
}

} // namespace talmo
