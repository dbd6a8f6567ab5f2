#pragma once

#include <QScrollArea>
#include <QString>

namespace talmo {

/// A page that scrolls up and down on a low screen and looks like its window. `name`: for screen readers. Takes the
/// page; the caller gives the result a parent.
QScrollArea *scrollAreaOf(QWidget *page, const QString &name);

} // namespace talmo
