#include "Platform/Linux/SystemLocaleSource.h"

#include <QLocale>

namespace talmo {

QString SystemLocaleSource::currentIdentifier() const
{
    return QLocale::system().name();
}

} // namespace talmo
