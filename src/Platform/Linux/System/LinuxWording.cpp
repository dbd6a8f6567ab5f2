#include "Platform/Linux/System/LinuxWording.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace talmo {

namespace {

/// Adds a catalogue that takes precedence over those added earlier, if there is one for the locale.
void add(const QLocale &locale, const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, name, QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator);
    } else {
        delete translator;
    }
}

} // namespace

void installWording()
{
    const QString name = QStringLiteral("talmo");
    const QString folder = QStringLiteral(":/wording");
    const QLocale fallback(QLocale::English);
    add(fallback, name, folder);
    if (QLocale().language() != fallback.language()) {
        add(QLocale(), QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        add(QLocale(), name, folder);
    }
}

} // namespace talmo
