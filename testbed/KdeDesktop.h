#pragma once

#include "ChildProcess.h"

#include <QByteArray>
#include <QImage>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>

namespace talmo::testbed {

/// A private KDE session: KWin without a screen, with XWayland, and a session bus. KWin knows a program by its file, so
/// it runs as the same user as the programs, and refuses root.
class KdeDesktop {
public:
    /// Whether the programs are installed, and the user is one that KWin runs for.
    static bool isPossible();

    /// `trusted`: programs that have a desktop entry which lets them paste. Throws Error if KWin does not start.
    explicit KdeDesktop(const QStringList &trusted);
    ~KdeDesktop();
    KdeDesktop(const KdeDesktop &) = delete;
    KdeDesktop &operator=(const KdeDesktop &) = delete;

    /// For programs that run on this desktop, as Wayland clients where they can.
    QProcessEnvironment environment() const { return m_environment; }
    /// Private to this desktop and deleted with it.
    QString folder() const { return m_folder.path(); }
    void storeSettings(QJsonObject settings);

    QImage screenshot();

    /// Copies this as another program would.
    void copy(const QByteArray &text, const QString &type = QStringLiteral("text/plain;charset=utf-8"));
    /// The clipboard as another program reads it; empty if there is none.
    QByteArray paste(const QString &type = QStringLiteral("text/plain;charset=utf-8"));

private:
    void trust(const QString &program);
    void startKWin();

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    std::unique_ptr<ChildProcess> m_bus;
    std::unique_ptr<ChildProcess> m_kwin;
    int m_trusted = 0;
};

} // namespace talmo::testbed
