#pragma once

#include "ChildProcess.h"

#include <QColor>
#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace talmo::testbed {

/// A desktop people use, in as few programs as show Talmo in it: a window manager and a panel with a tray.
struct TourDesktop {
    QString name;
    /// The window manager first.
    QList<QStringList> programs;
    /// Configuration files, relative to the user's configuration folder, with their contents.
    QList<std::pair<QString, QString>> files;
    /// As the session sets it.
    QString currentDesktop;
};

const QList<TourDesktop> &tourDesktops();

/// The desktop with a panel of that colour: those of XFCE, MATE, Cinnamon and Plasma. Throws Error for others.
TourDesktop withPanel(TourDesktop desktop, const QColor &colour);

/// Writes its files and starts its programs. `folder` is the user's configuration folder. Throws Error.
std::vector<std::unique_ptr<ChildProcess>> startDesktop(const TourDesktop &desktop, const QString &folder,
                                                        const QProcessEnvironment &environment);

} // namespace talmo::testbed
