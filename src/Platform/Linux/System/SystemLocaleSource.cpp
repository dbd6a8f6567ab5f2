#include "Platform/Linux/System/SystemLocaleSource.h"

#include <QLocale>

#include <utility>

namespace talmo {

SystemLocaleSource::SystemLocaleSource(QString dictationLanguage)
    : m_dictationLanguage(std::move(dictationLanguage))
{
}

QString SystemLocaleSource::currentIdentifier() const
{
    return m_dictationLanguage.isEmpty() ? QLocale::system().name() : m_dictationLanguage;
}

} // namespace talmo
