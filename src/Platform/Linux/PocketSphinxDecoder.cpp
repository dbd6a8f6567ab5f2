#include "Platform/Linux/PocketSphinxDecoder.h"

#include "Base/Error.h"

#include <pocketsphinx/pocketsphinx.h>
#include <pocketsphinx/ps_search.h>
#include <sphinxbase/cmn.h>
#include <sphinxbase/err.h>
#include <sphinxbase/fe.h>
#include <sphinxbase/feat.h>
#include <sphinxbase/ngram_model.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
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

/// The commands as words of their own: heard as two, “new” and “line” lose against what is more usual. Weights are
/// relative to an average word's.
struct CommandWord {
    const char *token;
    const char *phones;
    const char *words;
    /// What takes its place in the middle of a sentence: nobody means a command there, and it must not act.
    const char *inPassing;
};
constexpr CommandWord commandWords[] = {{"new_line", "N UW L AY N", "new line", "newline"},
                                        {"new_paragraph", "N UW P EH R AH G R AE F", "new paragraph", "paragraph"}};
constexpr float commandWeight = 300;
/// Names are rare in general and frequent with the one who has entered them.
constexpr float personalWeight = 3000;

constexpr char searchName[] = "talmo";

/// Personal words go into the language model as one class: it stands a handful of single words more, and then reads
/// beyond its own memory.
void addClass(ngram_model_t &model, QByteArrayList &tokens)
{
    if (tokens.isEmpty()) {
        return;
    }
    std::vector<char *> words;
    words.reserve(static_cast<std::size_t>(tokens.size()));
    for (auto &token : tokens) {
        words.push_back(token.data());
    }
    const auto count = static_cast<float>(tokens.size());
    const std::vector<float> weights(words.size(), 1 / count);
    require(ngram_model_add_class(&model, "[personal]", personalWeight * count, words.data(), weights.data(),
                                  static_cast<int32>(words.size())),
            "the personal words were refused.");
}

} // namespace

/// A word, or a filler such as silence, of the best path so far.
struct PocketSphinxDecoder::HeardWord {
    QByteArray token;
    int frames;
    bool isFiller() const { return token.startsWith('<') || token.startsWith('[') || token.startsWith("++"); }
};

bool PocketSphinxDecoder::isModelInstalled(const QString &modelFolder)
{
    return QFileInfo::exists(acousticModel(modelFolder) + QStringLiteral("/mdef")) &&
           QFileInfo::exists(languageModel(modelFolder)) && QFileInfo::exists(dictionary(modelFolder));
}

std::unique_ptr<PocketSphinxDecoder> PocketSphinxDecoder::load(const QString &modelFolder,
                                                               const PersonalVocabulary &vocabulary)
{
    err_set_logfp(nullptr); // The library would tell the terminal about every frame.
    const QByteArray hmm = QFile::encodeName(acousticModel(modelFolder));
    const QByteArray dict = QFile::encodeName(dictionary(modelFolder));
    // One pass with narrow beams: measured to lose next to nothing, and the end of an utterance then costs a few
    // milliseconds instead of a tenth of a second and more.
    cmd_ln_t *config = cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", hmm.constData(), "-dict", dict.constData(),
                                   "-fwdflat", "no", "-beam", "1e-60", "-pbeam", "1e-60", "-wbeam", "1e-40", nullptr);
    ps_decoder_t *decoder = config != nullptr ? ps_init(config) : nullptr;
    if (config != nullptr) {
        cmd_ln_free_r(config);
    }
    if (decoder == nullptr) {
        throw Error(QStringLiteral("The speech model in %1 could not be loaded.").arg(modelFolder));
    }
    std::unique_ptr<PocketSphinxDecoder> result(new PocketSphinxDecoder(decoder));
    result->addVocabulary(modelFolder, vocabulary);
    return result;
}

/// Words must be in the dictionary and in the language model before the search is made of the two.
void PocketSphinxDecoder::addVocabulary(const QString &modelFolder, const PersonalVocabulary &vocabulary)
{
    m_vocabulary = vocabulary;
    const QByteArray file = QFile::encodeName(languageModel(modelFolder));
    const std::unique_ptr<ngram_model_t, decltype(&ngram_model_free)> model(
        ngram_model_read(ps_get_config(m_decoder), file.constData(), NGRAM_AUTO, ps_get_logmath(m_decoder)),
        &ngram_model_free);
    if (!model) {
        throw Error(QStringLiteral("The speech model in %1 could not be loaded.").arg(modelFolder));
    }
    const auto addToDictionary = [this](const QByteArray &token, const QByteArray &phones, const QString &spelling) {
        const bool isAdded = ps_add_word(m_decoder, token.constData(), phones.constData(), FALSE) >= 0;
        if (isAdded) {
            m_spellings.insert(token, spelling);
        }
        return isAdded;
    };
    for (const auto &command : commandWords) {
        if (addToDictionary(command.token, command.phones, QString::fromLatin1(command.inPassing))) {
            ngram_model_add_word(model.get(), command.token, commandWeight);
        }
    }
    const Pronunciation pronunciation(
        [this](const QString &word) {
            char *phones = ps_lookup_word(m_decoder, word.toUtf8().constData());
            const QByteArray result(phones);
            ckd_free(phones);
            return result;
        },
        vocabulary.soundsLike);
    QByteArrayList tokens;
    for (qsizetype index = 0; index < vocabulary.words.size(); ++index) {
        const QByteArray phones = pronunciation.of(vocabulary.words.at(index));
        const QByteArray token = "word" + QByteArray::number(index) + ":personal";
        if (!phones.isEmpty() && addToDictionary(token, phones, vocabulary.words.at(index))) {
            tokens.append(token);
        }
    }
    addClass(*model, tokens);
    require(ps_set_lm(m_decoder, searchName, model.get()), "the language model was refused.");
    require(ps_set_search(m_decoder, searchName), "the search could not be made.");
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

void PocketSphinxDecoder::processWhole(std::span<const std::int16_t> samples)
{
    const CepstralMean mean = cepstralMean();
    beginUtterance();
    require(ps_process_raw(m_decoder, samples.data(), samples.size(), FALSE, TRUE), "audio was refused.");
    endUtterance();
    setCepstralMean(mean);
}

bool PocketSphinxDecoder::isInSpeech() const
{
    return ps_get_in_speech(m_decoder) != 0;
}

std::vector<PocketSphinxDecoder::HeardWord> PocketSphinxDecoder::heardWords() const
{
    std::vector<HeardWord> words;
    for (ps_seg_t *segment = ps_seg_iter(m_decoder); segment != nullptr; segment = ps_seg_next(segment)) {
        QByteArray token = ps_seg_word(segment);
        if (const auto variant = token.indexOf('('); variant > 0) {
            token.truncate(variant);
        }
        int first = 0;
        int last = 0;
        ps_seg_frames(segment, &first, &last);
        words.push_back({token, last - first + 1});
    }
    return words;
}

int PocketSphinxDecoder::trailingSilence() const
{
    const auto words = heardWords();
    return !words.empty() && words.back().isFiller() ? words.back().frames : 0;
}

QString PocketSphinxDecoder::hypothesis() const
{
    const auto words = heardWords();
    // A filler that is long enough, or the edge of what was said, is where people mean commands.
    constexpr int shortestPause = 4; // Frames of a hundredth of a second.
    const auto isPause = [&words](std::size_t index) {
        return index >= words.size() || (words[index].isFiller() && words[index].frames >= shortestPause) ||
               words[index].token == "<s>" || words[index].token == "</s>";
    };
    QStringList text;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const auto &word = words[index];
        if (word.isFiller()) {
            continue;
        }
        const auto command = std::find_if(std::begin(commandWords), std::end(commandWords),
                                          [&word](const auto &each) { return word.token == each.token; });
        // Before the first there is the edge as well: an index below it is beyond the last.
        if (command != std::end(commandWords) && (isPause(index - 1) || isPause(index + 1))) {
            text.append(QString::fromLatin1(command->words));
        } else {
            text.append(m_spellings.value(word.token, QString::fromUtf8(word.token)));
        }
    }
    return text.join(QLatin1Char(' '));
}

PocketSphinxDecoder::CepstralMean PocketSphinxDecoder::cepstralMean() const
{
    const cmn_t *normalisation = ps_get_feat(m_decoder)->cmn_struct;
    CepstralMean mean(normalisation->veclen);
    std::copy_n(normalisation->cmn_mean, normalisation->veclen, mean.begin());
    return mean;
}

bool PocketSphinxDecoder::setCepstralMean(const CepstralMean &mean)
{
    cmn_t *normalisation = ps_get_feat(m_decoder)->cmn_struct;
    if (mean.size() != normalisation->veclen) {
        return false;
    }
    cmn_live_set(normalisation, mean.constData());
    return true;
}

/// By a front end apart from the decoder's: the decoder's would be searched, slowly, with the wrong sound.
bool PocketSphinxDecoder::learnFrom(std::span<const std::int16_t> samples)
{
    constexpr int leastFrames = 40; // A hundred are a second. Those without speech do not count.
    constexpr int32 framesAtOnce = 64;
    const std::unique_ptr<fe_t, decltype(&fe_free)> frontEnd(fe_init_auto_r(ps_get_config(m_decoder)), &fe_free);
    if (!frontEnd) {
        return false;
    }
    const auto size = static_cast<std::size_t>(fe_get_output_size(frontEnd.get()));
    std::vector<mfcc_t> values(size * framesAtOnce);
    std::vector<mfcc_t *> frames;
    frames.reserve(framesAtOnce);
    for (std::size_t frame = 0; frame < framesAtOnce; ++frame) {
        frames.push_back(values.data() + frame * size);
    }
    std::vector<double> sums(size);
    int count = 0;
    fe_start_stream(frontEnd.get());
    fe_start_utt(frontEnd.get());
    const int16 *rest = samples.data();
    std::size_t left = samples.size();
    int32 made = framesAtOnce;
    while (left > 0 && made > 0) {
        made = framesAtOnce;
        int32 ignoredStart = 0;
        if (fe_process_frames(frontEnd.get(), &rest, &left, frames.data(), &made, &ignoredStart) < 0) {
            return false;
        }
        for (std::size_t value = 0; value < static_cast<std::size_t>(made) * size; ++value) {
            sums[value % size] += static_cast<double>(values[value]);
        }
        count += made;
    }
    if (count < leastFrames) {
        return false;
    }
    CepstralMean mean;
    for (const double sum : sums) {
        mean.append(static_cast<float>(sum / count));
    }
    return setCepstralMean(mean);
}

PocketSphinxDecoderPool::PocketSphinxDecoderPool(QString modelFolder)
    : m_modelFolder(std::move(modelFolder))
{
}

std::unique_ptr<PocketSphinxDecoder> PocketSphinxDecoderPool::take()
{
    PersonalVocabulary vocabulary;
    {
        const std::lock_guard lock(m_mutex);
        if (m_kept) {
            return std::move(m_kept);
        }
        vocabulary = m_vocabulary;
    }
    return PocketSphinxDecoder::load(m_modelFolder, vocabulary);
}

void PocketSphinxDecoderPool::giveBack(std::unique_ptr<PocketSphinxDecoder> decoder)
{
    const std::lock_guard lock(m_mutex);
    if (!m_kept && decoder->vocabulary() == m_vocabulary) {
        m_kept = std::move(decoder);
    }
}

void PocketSphinxDecoderPool::setVocabulary(const PersonalVocabulary &vocabulary)
{
    std::unique_ptr<PocketSphinxDecoder> outdated; // Let go of without the lock: it takes a while.
    const std::lock_guard lock(m_mutex);
    m_vocabulary = vocabulary;
    if (m_kept && m_kept->vocabulary() != vocabulary) {
        outdated = std::move(m_kept);
    }
}

void PocketSphinxDecoderPool::unload()
{
    std::unique_ptr<PocketSphinxDecoder> unused;
    const std::lock_guard lock(m_mutex);
    unused = std::move(m_kept);
}

bool PocketSphinxDecoderPool::keepsOne() const
{
    const std::lock_guard lock(m_mutex);
    return m_kept != nullptr;
}

} // namespace talmo
