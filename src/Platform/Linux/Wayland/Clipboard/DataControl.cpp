#include "Platform/Linux/Wayland/Clipboard/DataControl.h"

#include <array>
#include <utility>

namespace talmo {

namespace {

/// Only the name of the first interface is ever sent, when it is bound; from then on the protocols are equal.
wl_interface managerNamed(const char *name)
{
    wl_interface interface = zwlr_data_control_manager_v1_interface;
    interface.name = name;
    return interface;
}

const wl_interface standardManager = managerNamed("ext_data_control_manager_v1");
constexpr quint32 wlrVersionWithPrimary = 2;

const std::array<const wl_interface *, 2> &managers()
{
    static const std::array<const wl_interface *, 2> all = {&standardManager, &zwlr_data_control_manager_v1_interface};
    return all;
}

} // namespace

QByteArray DataControl::offeredInterface(const WaylandSession &session)
{
    for (const auto *interface : managers()) {
        if (session.offeredVersion(interface->name) > 0) {
            return interface->name;
        }
    }
    return {};
}

DataControl::DataControl(WaylandSession &session)
    : m_session(session)
{
    for (const auto *interface : managers()) {
        if (m_manager == nullptr) {
            m_manager = session.bind<zwlr_data_control_manager_v1>(*interface, wlrVersionWithPrimary);
            m_hasPrimary =
                interface == &standardManager || session.offeredVersion(interface->name) >= wlrVersionWithPrimary;
        }
    }
    if (m_manager == nullptr || session.seat() == nullptr) {
        return;
    }
    static constexpr zwlr_data_control_device_v1_listener listener = {
        [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
            static_cast<DataControl *>(self)->listenTo(offer);
        },
        [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
            static_cast<DataControl *>(self)->select(WaylandSelection::Clipboard, offer);
        },
        [](void *self, zwlr_data_control_device_v1 *) { static_cast<DataControl *>(self)->m_hasFinished = true; },
        [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
            static_cast<DataControl *>(self)->select(WaylandSelection::Primary, offer);
        }};
    m_device = zwlr_data_control_manager_v1_get_data_device(m_manager, session.seat());
    zwlr_data_control_device_v1_add_listener(m_device, &listener, this);
    session.synchronise();
}

DataControl::~DataControl()
{
    for (const auto &[proxy, offer] : m_offers) {
        zwlr_data_control_offer_v1_destroy(proxy);
    }
    if (m_device != nullptr) {
        zwlr_data_control_device_v1_destroy(m_device);
    }
    if (m_manager != nullptr) {
        zwlr_data_control_manager_v1_destroy(m_manager);
    }
    m_session.flush();
}

void DataControl::listenTo(zwlr_data_control_offer_v1 *proxy)
{
    static constexpr zwlr_data_control_offer_v1_listener listener = {
        [](void *self, zwlr_data_control_offer_v1 *offer, const char *type) {
            static_cast<DataControl *>(self)->addType(offer, type);
        }};
    m_offers[proxy] = {proxy, {}, ++m_lastSerial};
    zwlr_data_control_offer_v1_add_listener(proxy, &listener, this);
}

void DataControl::addType(zwlr_data_control_offer_v1 *proxy, const char *type)
{
    auto &types = m_offers[proxy].types;
    const QString name = QString::fromUtf8(type);
    if (!types.contains(name)) {
        types.append(name);
    }
}

void DataControl::select(WaylandSelection selection, zwlr_data_control_offer_v1 *offer)
{
    auto &current = selection == WaylandSelection::Clipboard ? m_clipboard : m_primary;
    auto *const old = std::exchange(current, offer);
    if (old != nullptr && old != m_clipboard && old != m_primary) {
        m_offers.erase(old);
        zwlr_data_control_offer_v1_destroy(old);
    }
}

const DataControl::Offer *DataControl::offer(WaylandSelection selection) const
{
    const auto found = m_offers.find(selection == WaylandSelection::Clipboard ? m_clipboard : m_primary);
    return found != m_offers.end() ? &found->second : nullptr;
}

zwlr_data_control_source_v1 *DataControl::createSource()
{
    return zwlr_data_control_manager_v1_create_data_source(m_manager);
}

void DataControl::setSelection(WaylandSelection selection, zwlr_data_control_source_v1 *source)
{
    if (!isUsable()) {
        return;
    }
    if (selection == WaylandSelection::Clipboard) {
        zwlr_data_control_device_v1_set_selection(m_device, source);
    } else if (m_hasPrimary) {
        zwlr_data_control_device_v1_set_primary_selection(m_device, source);
    }
    m_session.flush();
}

} // namespace talmo
