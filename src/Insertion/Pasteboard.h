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
    /// How the platform itself labels the data, where that is more than its type says; given back as it was read.
    QString nativeEncoding;
    int nativeUnitBits = 8;
    bool operator==(const PasteboardRepresentation &) const = default;
};

/// One thing on the pasteboard, in all the types in which its owner offers it.
struct PasteboardItem {
    QList<PasteboardRepresentation> representations;
    bool operator==(const PasteboardItem &) const = default;
};

/// The general pasteboard. Called on the main thread, never waits there; the calls take effect in the order in which
/// they were made. A paste is bracketed by beginPaste() and endPaste(): what is written after the paste chord was
/// posted may take effect only once the program in front has read what stood there for it.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    virtual void beginPaste() = 0;
    virtual void endPaste() = 0;

    /// A copy of everything on the pasteboard, with the types that could be read. Ends within half a second of a
    /// pending restore's end; never fails.
    virtual QFuture<QList<PasteboardItem>> items() = 0;

    virtual void clearContents() = 0;
    /// To a cleared pasteboard.
    virtual void setString(const QString &text) = 0;
    virtual void writeItems(const QList<PasteboardItem> &items) = 0;

    /// Finishes once nothing that was asked for is pending any more.
    virtual QFuture<void> settled() = 0;
};

} // namespace talmo
