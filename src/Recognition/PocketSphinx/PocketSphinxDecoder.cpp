#include "Recognition/PocketSphinx/PocketSphinxDecoder.h"

#include "Base/Error.h"
#include "Recognition/PocketSphinx/ProcessorTime.h"
#include "Recognition/RecognitionFailure.h"

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
#include <cmath>
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
        throw RecognitionFailure(QString::fromLatin1(what));
    }
}

/// The commands, as dictionary words of their own: as separate words, “new” and “line” lose to more common ones.
struct CommandWord {
    const char *token;
    const char *phones;
    const char *words;
    /// The replacement in the middle of a sentence, where the words are not a command and must not act as one.
    const char *inPassing;
    /// A list command, which must be the last phrase or be followed by a pause; “as the list shows” starts in much the
    /// same way.
    bool isListRequest;
};
constexpr CommandWord commandWords[] = {
    {"new_line", "N UW L AY N", "new line", "newline", false},
    {"new_paragraph", "N UW P EH R AH G R AE F", "new paragraph", "paragraph", false},
    {"bulleted_list:own", "AE Z AH B UH L AH T AH D L IH S T", "as a bulleted list", "as bulleted list", true},
    {"bullet_points:own", "AE Z B UH L AH T P OY N T S", "as bullet points", "as the bullet points", true},
    {"bullet_list:own", "AE Z AH B UH L AH T L IH S T", "as a bullet list", "as bullet list", true},
    {"in_bullet_points:own", "IH N B UH L AH T P OY N T S", "in bullet points", "in the bullet points", true},
    {"bullets:own", "AE Z B UH L AH T S", "as bullets", "as the bullets", true},
    {"in_a_list:own", "IH N AH L IH S T", "in a list", "in the list", true},
    {"as_a_list:own", "AE Z AH L IH S T", "as a list", "as the list", true},
    {"make_list:own", "M EY K DH IH S AH L IH S T", "make this a list", "make this the list", true},
    {"format_list:own", "F AO R M AE T DH IH S AE Z AH L IH S T", "format this as a list", "format this as the list",
     true},
    {"bullet_point:own", "B UH L AH T P OY N T DH IH S", "bullet point this", "bullet point that", true}};
// Relative to an average word's. With the weight of the other commands, “as a list” would win over “as this” in the
// middle of a sentence.
constexpr float commandWeight = 300;
constexpr float listRequestWeight = 50;

const CommandWord *findCommand(const QByteArray &token)
{
    const auto *command = std::find_if(std::begin(commandWords), std::end(commandWords),
                                       [&token](const CommandWord &each) { return token == each.token; });
    return command != std::end(commandWords) ? command : nullptr;
}

/// Names are rare in general, but frequent for the user who added them. The shorter a name, the more easily it is taken
/// for something else, above all in noise.
float personalWeight(const QByteArray &phones)
{
    constexpr float heaviest = 20000;
    constexpr float lightest = 60;
    constexpr float perMissingPhone = 6;
    constexpr int phonesOfLongName = 8;
    const auto count = static_cast<int>(phones.count(' ')) + 1;
    const auto missing = static_cast<float>(std::max(0, phonesOfLongName - count));
    return std::max(lightest, heaviest / std::pow(perMissingPhone, missing));
}

constexpr char searchName[] = "talmo";

/// The words that are added to the language model, as one class: with more than a handful of single words, or with a
/// second class, the library reads beyond its own memory.
struct OwnWords {
    QByteArrayList tokens;
    std::vector<float> weights;

    void add(const QByteArray &token, float weight)
    {
        tokens.append(token);
        weights.push_back(weight);
    }

    /// The class weighs as much as its heaviest word, so that a word's weight does not depend on how many there are.
    /// The library raises that to the power of `languageWeight`, but not a word's share of the class.
    void addTo(ngram_model_t &model, double languageWeight)
    {
        if (tokens.isEmpty()) {
            return;
        }
        const float heaviest = *std::max_element(weights.begin(), weights.end());
        std::vector<char *> words;
        std::vector<float> shares;
        for (qsizetype index = 0; index < tokens.size(); ++index) {
            words.push_back(tokens[index].data());
            const double share = weights[static_cast<std::size_t>(index)] / heaviest;
            shares.push_back(static_cast<float>(std::pow(share, languageWeight)));
        }
        require(ngram_model_add_class(&model, "[own]", heaviest, words.data(), shares.data(),
                                      static_cast<int32>(words.size())),
                "the words of its own were refused.");
    }
};

} // namespace

/// A word, or a filler such as silence, of the best path so far.
struct PocketSphinxDecoder::DecodedWord {
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
                                                               const PersonalVocabulary &vocabulary, SearchWidth width)
{
    err_set_logfp(nullptr); // Silences the library's per-frame logging.
    const QByteArray hmm = QFile::encodeName(acousticModel(modelFolder));
    const QByteArray dict = QFile::encodeName(dictionary(modelFolder));
    // One pass, and few words that end in the same frame: measured to lose next to no accuracy. At the end of an
    // utterance, the best path is searched among all words that ended somewhere, in a time that grows with their
    // square.
    cmd_ln_t *config =
        cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", hmm.constData(), "-dict", dict.constData(), "-fwdflat", "no",
                    "-beam", "1e-60", "-pbeam", "1e-60", "-wbeam", "1e-40", "-maxwpf", "20", nullptr);
    ps_decoder_t *decoder = config != nullptr ? ps_init(config) : nullptr;
    if (config != nullptr) {
        cmd_ln_free_r(config);
    }
    if (decoder == nullptr) {
        throw Error(QStringLiteral("The speech model in %1 could not be loaded.").arg(modelFolder));
    }
    std::unique_ptr<PocketSphinxDecoder> result(new PocketSphinxDecoder(decoder));
    result->makeSearch(modelFolder, vocabulary, width);
    return result;
}

/// Words must be in the dictionary and in the language model before the search is created from the two.
void PocketSphinxDecoder::makeSearch(const QString &modelFolder, const PersonalVocabulary &vocabulary,
                                     SearchWidth width)
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
    OwnWords own;
    for (const auto &command : commandWords) {
        if (!addToDictionary(command.token, command.phones, QString::fromLatin1(command.inPassing))) {
            continue;
        }
        if (command.isListRequest) {
            own.add(command.token, listRequestWeight);
        } else {
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
    for (qsizetype index = 0; index < vocabulary.words.size(); ++index) {
        const QByteArray phones = pronunciation.of(vocabulary.words.at(index));
        const QByteArray token = "word" + QByteArray::number(index) + ":own";
        if (!phones.isEmpty() && addToDictionary(token, phones, vocabulary.words.at(index))) {
            own.add(token, personalWeight(phones));
        }
    }
    own.addTo(*model, cmd_ln_float_r(ps_get_config(m_decoder), "-lw"));
    m_width = width;
    cmd_ln_set_int_r(ps_get_config(m_decoder), "-maxhmmpf", mostHypotheses(m_width));
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
    const double before = processorTimeOfThread();
    require(ps_process_raw(m_decoder, samples.data(), samples.size(), FALSE, FALSE), "audio was refused.");
    if (isInSpeech()) { // Silence costs nothing.
        m_processingSeconds += processorTimeOfThread() - before;
        m_processedSamples += samples.size();
    }
}

std::optional<double> PocketSphinxDecoder::realTimeFactor() const
{
    constexpr auto enough = 2 * std::size_t(sampleRate);
    if (m_processedSamples < enough) {
        return std::nullopt;
    }
    return m_processingSeconds * sampleRate / static_cast<double>(m_processedSamples);
}

void PocketSphinxDecoder::endUtterance()
{
    require(ps_end_utt(m_decoder), "an utterance could not end.");
}

bool PocketSphinxDecoder::isInSpeech() const
{
    return ps_get_in_speech(m_decoder) != 0;
}

std::vector<PocketSphinxDecoder::DecodedWord> PocketSphinxDecoder::heardWords() const
{
    std::vector<DecodedWord> words;
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

/// A frame is compared with those around it, and the sounds in the next ones decide which words are begun.
int PocketSphinxDecoder::framesAhead() const
{
    return static_cast<int>(cmd_ln_int_r(ps_get_config(m_decoder), "-pl_window")) +
           feat_window_size(ps_get_feat(m_decoder));
}

QString PocketSphinxDecoder::hypothesis() const
{
    const auto words = heardWords();
    // Users mean commands only beside a pause: a filler of this length, or the start or end of the utterance.
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
        const CommandWord *command = findCommand(word.token);
        // The start counts as a pause too: the index before the first word wraps around to beyond the last.
        if (command != nullptr && (isPause(index + 1) || (!command->isListRequest && isPause(index - 1)))) {
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

/// Uses a separate front end: the decoder's own would run the search, slowly and without calibration.
bool PocketSphinxDecoder::calibrate(std::span<const std::int16_t> samples)
{
    constexpr int leastFrames = 40; // A hundred are a second. Frames without speech do not count.
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

} // namespace talmo
