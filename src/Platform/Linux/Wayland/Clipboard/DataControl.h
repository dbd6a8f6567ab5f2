#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"

#include <data-control.h>

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>

namespace talmo {

enum class WaylandSelection { Clipboard, Primary };

/// Access to the session's selections that needs no focused window: what other programs offer, and Talmo's own sources.
/// By ext-data-control or wlr-data-control, which are the same protocol under two names. The session's thread only.
class DataControl {
public:
    /// The interface that the compositor offers, the newer one first; empty if it offers neither. Any thread.
    static QByteArray offeredInterface(const WaylandSession &session);

    explicit DataControl(WaylandSession &session);
    ~DataControl();
    DataControl(const DataControl &) = delete;
    DataControl &operator=(const DataControl &) = delete;

    /// False without data control, and once the compositor has ended it.
    bool isUsable() const { return m_device != nullptr && !m_hasFinished; }
    bool hasPrimary() const { return m_hasPrimary; }

    struct Offer {
        zwlr_data_control_offer_v1 *proxy = nullptr;
        /// In its owner's order, without duplicates.
        QStringList types;
        /// Differs for each offer.
        quint64 serial = 0;
    };
    /// What is offered in this selection, including by Talmo; null if nothing is.
    const Offer *offer(WaylandSelection selection) const;

    zwlr_data_control_source_v1 *createSource();
    /// Null clears the selection.
    void setSelection(WaylandSelection selection, zwlr_data_control_source_v1 *source);

    WaylandSession &session() const { return m_session; }

private:
    void select(WaylandSelection selection, zwlr_data_control_offer_v1 *offer);
    void listenTo(zwlr_data_control_offer_v1 *proxy);
    void addType(zwlr_data_control_offer_v1 *proxy, const char *type);

    WaylandSession &m_session;
    zwlr_data_control_manager_v1 *m_manager = nullptr;
    zwlr_data_control_device_v1 *m_device = nullptr;
    bool m_hasPrimary = false;
    bool m_hasFinished = false;
    quint64 m_lastSerial = 0;
    std::map<zwlr_data_control_offer_v1 *, Offer> m_offers;
    zwlr_data_control_offer_v1 *m_clipboard = nullptr;
    zwlr_data_control_offer_v1 *m_primary = nullptr;
};

} // namespace talmo
