#pragma once

#include "Base/Error.h"

namespace talmo {

/// An error with a detail for engineers, such as a path or another program's message. Windows show its description
/// alone; the log and terminal programs show what(), which has both.
class DetailedError : public Error {
public:
    DetailedError(const QString &description, const QString &detail)
        : Error(description),
          m_whole(detail.isEmpty() ? description.toUtf8() : QStringLiteral("%1 (%2)").arg(description, detail).toUtf8())
    {
    }

    const char *what() const noexcept override { return m_whole.constData(); }

private:
    QByteArray m_whole;
};

/// What the log and terminal programs show of any error.
inline QString wholeDescription(const Error &error)
{
    return QString::fromUtf8(error.what());
}
inline QString wholeDescription(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const Error &known) {
        return wholeDescription(known);
    } catch (...) {
        return localizedDescription(error);
    }
}

} // namespace talmo
