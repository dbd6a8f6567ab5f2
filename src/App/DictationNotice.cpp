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

void DictationNotice::setHint(const QString &hint, const QString &key)
{
    if (hint != m_hint || key != m_hintKey) {
        publish(m_hint, hint);
        m_hintKey = key;
    }
}

void DictationNotice::setFarewell(const QString &farewell)
{
    if (farewell != m_farewell) {
        publish(m_farewell, farewell);
    }
}

} // namespace talmo
