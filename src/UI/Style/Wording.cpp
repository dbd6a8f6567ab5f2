#include "UI/Style/Wording.h"

#include <QCoreApplication>

namespace talmo::Wording {

QString text(const char *source)
{
    return QCoreApplication::translate(context, source);
}

QString text(const QString &source)
{
    return text(source.toUtf8().constData());
}

QString textWithKey(const char *source, const QString &keyName)
{
    return text(source).replace(QStringLiteral("%1"), keyName);
}

QString errorText(const QString &description)
{
    QString whole = text(description);
    const QString separator = QStringLiteral(": ");
    const auto end = description.indexOf(separator);
    if (whole != description || end < 0) {
        return whole;
    }
    const auto prefixLength = end + separator.size();
    return text(description.left(prefixLength)) + description.mid(prefixLength);
}

} // namespace talmo::Wording
