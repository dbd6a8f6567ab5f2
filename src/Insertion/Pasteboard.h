#pragma once

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QString>

namespace talmo {

/// The data that an item holds under one type.
struct PasteboardRepresentation {
    QString type;
    QByteArray data;
    /// The platform's own label for the data, if it is more specific than the type; written back as it was read.
    QString nativeEncoding;
    int nativeUnitBits = 8;
    bool operator==(const PasteboardRepresentation &) const = default;
};

/// One item on the pasteboard, in every type that its owner offers.
struct PasteboardItem {
    QList<PasteboardRepresentation> representations;
    bool operator==(const PasteboardItem &) const = default;
};

/// The general pasteboard. Called on the main thread, which it never blocks; calls take effect in order. A paste is
/// bracketed by beginPaste() and endPaste(): what is written after the paste shortcut was posted may take effect only
/// once the frontmost application has read the content meant for it.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    virtual void beginPaste() = 0;
    virtual void endPaste() = 0;

    /// A copy of everything on the pasteboard, in the types that could be read. Finishes within half a second of the
    /// end of any pending restore; never fails.
    virtual QFuture<QList<PasteboardItem>> items() = 0;

    virtual void clearContents() = 0;
    /// Only on a cleared pasteboard.
    virtual void setString(const QString &text) = 0;
    virtual void writeItems(const QList<PasteboardItem> &items) = 0;

    /// Finishes once all requested operations are done.
    virtual QFuture<void> settled() = 0;
};

} // namespace talmo
