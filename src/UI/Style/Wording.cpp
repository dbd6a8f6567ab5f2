#include "UI/Style/Wording.h"

#include "Insertion/PasteStyle.h"

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
    return text(source).replace(QStringLiteral("%1"), text(keyName));
}

QString errorText(const QString &description)
{
    if (const QString whole = text(description); whole != description) {
        return whole;
    }
    for (const auto &shortcut : shortcutNames()) {
        const QString source = QString(description).replace(shortcut, QStringLiteral("%1"));
        if (const QString translated = text(source); translated != source) {
            return translated.arg(text(shortcut));
        }
    }
    const QString separator = QStringLiteral(": ");
    const auto end = description.indexOf(separator);
    if (end < 0) {
        return description;
    }
    const auto prefixLength = end + separator.size();
    return text(description.left(prefixLength)) + errorText(description.mid(prefixLength));
}

} // namespace talmo::Wording
