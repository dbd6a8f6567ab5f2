#pragma once

#include "Platform/Linux/System/LinuxWording.h"

#include <QCoreApplication>
#include <QLocale>
#include <QString>
#include <QTranslator>

namespace talmo::test {

/// Takes all catalogues away again at the end of a test.
class TranslatedDesktop {
public:
    explicit TranslatedDesktop(const QString &locale)
        : m_before(QLocale())
    {
        removeCatalogues();
        QLocale::setDefault(QLocale(locale));
        installWording();
    }
    ~TranslatedDesktop()
    {
        QLocale::setDefault(m_before);
        removeCatalogues();
    }
    TranslatedDesktop(const TranslatedDesktop &) = delete;
    TranslatedDesktop &operator=(const TranslatedDesktop &) = delete;

private:
    static void removeCatalogues()
    {
        qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator *>(Qt::FindDirectChildrenOnly));
    }

    QLocale m_before;
};

} // namespace talmo::test
