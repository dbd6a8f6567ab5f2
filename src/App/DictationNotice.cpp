#include "App/DictationNotice.h"

namespace talmo {

void DictationNotice::show(const QString &text)
{
    publish(m_text, text);
}

void DictationNotice::clear()
{
    if (!m_text.isEmpty()) {
        publish(m_text, QString());
    }
}

} // namespace talmo
