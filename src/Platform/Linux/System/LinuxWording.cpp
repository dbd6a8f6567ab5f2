#include "Platform/Linux/System/LinuxWording.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace talmo {

namespace {

const QString folder = QStringLiteral(":/wording");

/// Adds a catalogue that takes precedence over those added earlier.
void add(const QLocale &locale)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, QStringLiteral("talmo"), QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator);
    } else {
        delete translator;
    }
}

} // namespace

void installWording()
{
    const QLocale fallback(QLocale::English);
    add(fallback);
    if (QLocale().language() != fallback.language()) {
        add(QLocale());
    }
}

} // namespace talmo
