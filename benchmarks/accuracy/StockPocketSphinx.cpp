#include "accuracy/StockPocketSphinx.h"

#include "Base/Error.h"
#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "accuracy/Pace.h"
#include "accuracy/SoundFiles.h"

#include <pocketsphinx/pocketsphinx.h>
#include <sphinxbase/err.h>

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <memory>

namespace talmo::accuracy {

namespace {

using Decoder = std::unique_ptr<ps_decoder_t, decltype(&ps_free)>;

Decoder makeDecoder()
{
    err_set_logfp(nullptr);
    const QByteArray folder = QFile::encodeName(PocketSphinxEngine::debianModelFolder()) + "/en-us/";
    const QByteArray acousticModel = folder + "en-us";
    const QByteArray languageModel = folder + "en-us.lm.bin";
    const QByteArray dictionary = folder + "cmudict-en-us.dict";
    cmd_ln_t *config = cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", acousticModel.constData(), "-lm",
                                   languageModel.constData(), "-dict", dictionary.constData(), nullptr);
    Decoder decoder(config != nullptr ? ps_init(config) : nullptr, &ps_free);
    cmd_ln_free_r(config);
    if (!decoder) {
        throw Error(QStringLiteral("PocketSphinx could not be started."));
    }
    return decoder;
}

void endUtterance(ps_decoder_t &decoder, bool hasBegun, QStringList &text)
{
    ps_end_utt(&decoder);
    const char *heard = hasBegun ? ps_get_hyp(&decoder, nullptr) : nullptr;
    if (heard != nullptr && *heard != '\0') {
        text.append(QString::fromUtf8(heard));
    }
}

} // namespace

PacedTranscript hearWithStockPocketSphinx(const QString &file)
{
    constexpr std::size_t blockSize = 2048;
    const auto samples = samplesAt16kHz(file);
    const Decoder decoder = makeDecoder();
    QStringList text;
    bool hasBegun = false;
    Pace pace;
    ps_start_utt(decoder.get());
    for (std::size_t start = 0; start < samples.size(); start += blockSize) {
        const std::size_t count = std::min(blockSize, samples.size() - start);
        ps_process_raw(decoder.get(), samples.data() + start, count, FALSE, FALSE);
        const bool isInSpeech = ps_get_in_speech(decoder.get()) != 0;
        hasBegun = hasBegun || isInSpeech;
        if (hasBegun && !isInSpeech) {
            endUtterance(*decoder, hasBegun, text);
            ps_start_utt(decoder.get());
            hasBegun = false;
        }
        pace.tookSound(static_cast<double>(count) / sampleRate);
    }
    endUtterance(*decoder, hasBegun, text);
    return pace.finished(text.join(QLatin1Char(' ')));
}

} // namespace talmo::accuracy
