#include "App/DictationRecovery.h"

#include <utility>

namespace talmo {

DictationRecovery::DictationRecovery(std::shared_ptr<LastDictation> last, std::shared_ptr<Pasteboard> pasteboard,
                                     std::shared_ptr<PasteWitness> witness)
    : m_last(std::move(last)),
      m_pasteboard(std::move(pasteboard)),
      m_witness(std::move(witness))
{
}

void DictationRecovery::copyLastText()
{
    if (const auto text = m_last->text()) {
        copy(*text);
    }
}

void DictationRecovery::copy(const QString &text)
{
    m_pasteboard->clearContents();
    m_pasteboard->setString(text);
}

} // namespace talmo
