#include "Speech/TranscriptionError.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

TEST(TranscriptionError, hasExpectedDescriptions)
{
    using Case = TranscriptionError::Case;
    const auto text = [](Case which) { return TranscriptionError(which).localizedDescription(); };
    EXPECT_EQ(text(Case::OnDeviceUnavailable), u"On-device speech recognition isn't available on this Mac."_s);
    EXPECT_EQ(text(Case::LocaleNotSupported), u"The current language isn't supported for on-device transcription."_s);
    EXPECT_EQ(text(Case::ModelAssetsNotInstalled),
              u"The on-device speech model for this language isn't installed yet. Installing it once requires an "
              u"internet connection; after that, transcription works fully offline."_s);
    EXPECT_EQ(text(Case::NoCompatibleAudioFormat),
              u"Couldn't find a compatible audio format for the microphone and speech recognizer."_s);
    EXPECT_EQ(text(Case::NotRecording), u"Not currently recording."_s);
}

} // namespace talmo::test
