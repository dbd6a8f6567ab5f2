#pragma once

#include "Recognition/Text/RecognisedText.h"
#include "Recognition/Text/SoundCorrection.h"

#include <memory>

namespace talmo {

/// Turns a model's text into what the user would write.
class ReadableText {
public:
    enum class Letters { AsWritten, Lower };

    /// `correction`: null if the model was given the custom vocabulary.
    ReadableText(Letters letters, PersonalSpelling spelling, std::shared_ptr<const SoundCorrection> correction);

    QString of(const QString &raw) const;

private:
    Letters m_letters;
    PersonalSpelling m_spelling;
    std::shared_ptr<const SoundCorrection> m_correction;
};

} // namespace talmo
