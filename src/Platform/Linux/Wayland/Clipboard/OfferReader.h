#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/Wayland/Clipboard/DataControl.h"

#include <QCoro/QCoroTask>

#include <chrono>

namespace talmo {

/// What another program offers in a selection, as far as it could be read.
struct OfferReading {
    enum class Loss { None, OwnerTooSlow, TooLarge };

    QList<PasteboardRepresentation> representations;
    /// Why something is missing; the first reason if there are several.
    Loss loss = Loss::None;
};

/// Reads other programs' selections. The session's thread only.
class OfferReader {
public:
    /// In total.
    static constexpr qsizetype maximumSize = qsizetype(256) * 1024 * 1024;
    /// More than any program offers.
    static constexpr qsizetype maximumCount = 256;

    explicit OfferReader(DataControl &control)
        : m_control(control)
    {
    }

    /// Everything that the owner offers and sends in time, in its order. `pause`: for an owner that sends nothing,
    /// `whole`: for everything it has. What is missing is logged by type and size.
    QCoro::Task<OfferReading> read(WaylandSelection selection, std::chrono::milliseconds pause,
                                   std::chrono::milliseconds whole);

private:
    DataControl &m_control;
};

} // namespace talmo
