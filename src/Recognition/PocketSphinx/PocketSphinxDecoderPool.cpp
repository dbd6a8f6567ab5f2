#include "Recognition/PocketSphinx/PocketSphinxDecoderPool.h"

#include <utility>

namespace talmo {

PocketSphinxDecoderPool::PocketSphinxDecoderPool(QString modelFolder)
    : m_modelFolder(std::move(modelFolder))
{
}

std::unique_ptr<PocketSphinxDecoder> PocketSphinxDecoderPool::take()
{
    PersonalVocabulary vocabulary;
    SearchWidth width = SearchWidth::Narrow;
    {
        const std::lock_guard lock(m_mutex);
        if (m_kept) {
            ++m_takenCount;
            return std::move(m_kept);
        }
        vocabulary = m_vocabulary;
        width = m_width;
    }
    auto decoder = PocketSphinxDecoder::load(m_modelFolder, vocabulary, width);
    const std::lock_guard lock(m_mutex);
    ++m_loadCount;
    ++m_takenCount;
    return decoder;
}

void PocketSphinxDecoderPool::warmUp()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_kept || m_takenCount > 0) {
            return;
        }
    }
    giveBack(take());
}

void PocketSphinxDecoderPool::noteSpeed(const PocketSphinxDecoder &decoder)
{
    const std::lock_guard lock(m_mutex);
    m_width = widthAfterRecognising(decoder.searchWidth(), decoder.realTimeFactor());
}

void PocketSphinxDecoderPool::giveBack(std::unique_ptr<PocketSphinxDecoder> decoder)
{
    noteSpeed(*decoder);
    const std::lock_guard lock(m_mutex);
    --m_takenCount;
    if (!m_kept && decoder->vocabulary() == m_vocabulary && decoder->searchWidth() == m_width) {
        m_kept = std::move(decoder);
    }
}

void PocketSphinxDecoderPool::discard(std::unique_ptr<PocketSphinxDecoder> decoder)
{
    decoder.reset();
    const std::lock_guard lock(m_mutex);
    --m_takenCount;
}

void PocketSphinxDecoderPool::setVocabulary(const PersonalVocabulary &vocabulary)
{
    std::unique_ptr<PocketSphinxDecoder> outdated; // Destroyed after the lock is released, since that takes a while.
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
