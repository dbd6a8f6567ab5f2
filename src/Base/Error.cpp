#include "Base/Error.h"

#include <utility>

namespace talmo {

Error::Error(QString description)
    : m_description(std::move(description)),
      m_utf8(m_description.toUtf8())
{
}

const char *Error::what() const noexcept
{
    return m_utf8.constData();
}

Cancelled::Cancelled()
    : Error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The operation was cancelled.")))
{
}

PlatformException::PlatformException(QString name, QString reason)
    : m_name(std::move(name)),
      m_reason(std::move(reason)),
      m_utf8(m_reason.toUtf8())
{
}

const char *PlatformException::what() const noexcept
{
    return m_utf8.constData();
}

QString localizedDescription(const std::exception_ptr &error)
{
    if (!error) {
        return {};
    }
    try {
        std::rethrow_exception(error);
    } catch (const Error &known) {
        return known.localizedDescription();
    } catch (const std::exception &foreign) {
        return QString::fromUtf8(foreign.what());
    } catch (...) {
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "An unknown error occurred."));
    }
}

} // namespace talmo
