#include "Platform/Linux/PocketSphinxDecoder.h"

#include "Base/Error.h"

#include <pocketsphinx/pocketsphinx.h>
#include <sphinxbase/err.h>

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace talmo {

namespace {

QString acousticModel(const QString &folder)
{
    return folder + QStringLiteral("/en-us/en-us");
}

QString languageModel(const QString &folder)
{
    return folder + QStringLiteral("/en-us/en-us.lm.bin");
}

QString dictionary(const QString &folder)
{
    return folder + QStringLiteral("/en-us/cmudict-en-us.dict");
}

void require(int result, const char *what)
{
    if (result < 0) {
        throw Error(QStringLiteral("The speech recognizer failed: ") + QString::fromLatin1(what));
    }
}

} // namespace

bool PocketSphinxDecoder::isModelInstalled(const QString &modelFolder)
{
    return QFileInfo::exists(acousticModel(modelFolder) + QStringLiteral("/mdef")) &&
           QFileInfo::exists(languageModel(modelFolder)) && QFileInfo::exists(dictionary(modelFolder));
}

std::unique_ptr<PocketSphinxDecoder> PocketSphinxDecoder::load(const QString &modelFolder)
{
    err_set_logfp(nullptr); // The library would tell the terminal about every frame.
    const QByteArray hmm = QFile::encodeName(acousticModel(modelFolder));
    const QByteArray lm = QFile::encodeName(languageModel(modelFolder));
    const QByteArray dict = QFile::encodeName(dictionary(modelFolder));
    // One pass with narrow beams: measured to lose next to nothing, and the end of an utterance then costs a few
    // milliseconds instead of a tenth of a second and more.
    cmd_ln_t *config =
        cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", hmm.constData(), "-lm", lm.constData(), "-dict", dict.constData(),
                    "-fwdflat", "no", "-beam", "1e-60", "-pbeam", "1e-60", "-wbeam", "1e-40", nullptr);
    ps_decoder_t *decoder = config != nullptr ? ps_init(config) : nullptr;
    if (config != nullptr) {
        cmd_ln_free_r(config);
    }
    if (decoder == nullptr) {
        throw Error(QStringLiteral("The speech model in %1 could not be loaded.").arg(modelFolder));
    }
    return std::unique_ptr<PocketSphinxDecoder>(new PocketSphinxDecoder(decoder));
}

PocketSphinxDecoder::PocketSphinxDecoder(ps_decoder_s *decoder)
    : m_decoder(decoder)
{
}

PocketSphinxDecoder::~PocketSphinxDecoder()
{
    ps_free(m_decoder);
}

void PocketSphinxDecoder::beginUtterance()
{
    require(ps_start_utt(m_decoder), "an utterance could not begin.");
}

void PocketSphinxDecoder::process(std::span<const std::int16_t> samples)
{
    require(ps_process_raw(m_decoder, samples.data(), samples.size(), FALSE, FALSE), "audio was refused.");
}

void PocketSphinxDecoder::endUtterance()
{
    require(ps_end_utt(m_decoder), "an utterance could not end.");
}

bool PocketSphinxDecoder::isInSpeech() const
{
    return ps_get_in_speech(m_decoder) != 0;
}

QString PocketSphinxDecoder::hypothesis() const
{
    int32 score = 0;
    const char *words = ps_get_hyp(m_decoder, &score);
    return words != nullptr ? QString::fromUtf8(words) : QString();
}

PocketSphinxDecoderPool::PocketSphinxDecoderPool(QString modelFolder)
    : m_modelFolder(std::move(modelFolder))
{
}

std::unique_ptr<PocketSphinxDecoder> PocketSphinxDecoderPool::take()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_kept) {
            return std::move(m_kept);
        }
    }
    return PocketSphinxDecoder::load(m_modelFolder);
}

void PocketSphinxDecoderPool::giveBack(std::unique_ptr<PocketSphinxDecoder> decoder)
{
    const std::lock_guard lock(m_mutex);
    if (!m_kept) {
        m_kept = std::move(decoder);
    }
}

} // namespace talmo
