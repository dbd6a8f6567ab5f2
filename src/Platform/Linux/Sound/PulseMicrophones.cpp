#include "Platform/Linux/Sound/PulseMicrophones.h"

#include "Base/Log.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace talmo {

namespace {

constexpr quint32 peaksPerSecond = 25;

PulseConnection::Deadline soon()
{
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
}

/// The answers come through the callback, which is not called any more once the connection is closed.
void forget(pa_operation *operation)
{
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

} // namespace

PulseMicrophones::PulseMicrophones(OnInventory onInventory, OnPeak onPeak)
    : m_onInventory(std::move(onInventory)),
      m_onPeak(std::move(onPeak))
{
}

PulseMicrophones::~PulseMicrophones()
{
    stopFollowing();
}

void PulseMicrophones::follow()
{
    if (m_connection && m_connection->isAlive()) {
        return;
    }
    stopFollowing();
    Inventory none;
    try {
        m_connection = PulseConnection::open(soon());
    } catch (const SoundAccessRefused &) {
        none.hasServer = none.isAccessRefused = true;
    } catch (const Error &error) {
        generalLog().debug("no sound server for the list of microphones: %@", {error.localizedDescription()});
    }
    if (m_connection) {
        subscribe();
    } else {
        m_onInventory(none);
    }
}

void PulseMicrophones::subscribe()
{
    const PulseConnection::Lock lock(m_connection->loop());
    auto *context = m_connection->context();
    pa_context_set_state_callback(
        context,
        [](pa_context *changed, void *data) {
            auto *self = static_cast<PulseMicrophones *>(data);
            if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(changed))) {
                self->m_onInventory(Inventory());
            }
            self->m_connection->wake();
        },
        this);
    pa_context_set_subscribe_callback(
        context,
        [](pa_context *, pa_subscription_event_type_t, quint32, void *data) {
            static_cast<PulseMicrophones *>(data)->requestInventory();
        },
        this);
    const auto events = static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
    forget(pa_context_subscribe(context, events, nullptr, nullptr));
    requestInventory();
}

void PulseMicrophones::stopFollowing()
{
    closeMeter();
    if (m_connection) {
        const PulseConnection::Lock lock(m_connection->loop());
        pa_context_set_state_callback(m_connection->context(), nullptr, nullptr);
        pa_context_set_subscribe_callback(m_connection->context(), nullptr, nullptr);
    }
    m_connection.reset();
}

/// The answers arrive in this order. Two requests under way give the same inventory twice, never a mixture: each begins
/// a new one.
void PulseMicrophones::requestInventory()
{
    auto *context = m_connection->context();
    forget(pa_context_get_server_info(context, &PulseMicrophones::serverTold, this));
    forget(pa_context_get_source_info_list(context, &PulseMicrophones::sourceListed, this));
}

void PulseMicrophones::serverTold(pa_context * /*context*/, const pa_server_info *info, void *data)
{
    auto *self = static_cast<PulseMicrophones *>(data);
    self->m_next = Inventory();
    self->m_next.hasServer = true;
    self->m_next.defaultName = info != nullptr ? QString::fromUtf8(info->default_source_name) : QString();
}

void PulseMicrophones::sourceListed(pa_context * /*context*/, const pa_source_info *info, int endOfList, void *data)
{
    auto *self = static_cast<PulseMicrophones *>(data);
    if (info != nullptr && info->monitor_of_sink == PA_INVALID_INDEX) {
        self->m_next.microphones.append({QString::fromUtf8(info->name), QString::fromUtf8(info->description)});
    }
    if (endOfList != 0) {
        self->m_onInventory(self->m_next);
    }
}

void PulseMicrophones::closeMeter()
{
    if (m_meter == nullptr) {
        return;
    }
    const PulseConnection::Lock lock(m_connection->loop());
    pa_stream_set_read_callback(m_meter, nullptr, nullptr);
    pa_stream_disconnect(m_meter);
    pa_stream_unref(m_meter);
    m_meter = nullptr;
}

void PulseMicrophones::listenTo(const QString &name)
{
    closeMeter();
    if (name.isEmpty() || !m_connection) {
        return;
    }
    const PulseConnection::Lock lock(m_connection->loop());
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32NE;
    spec.rate = peaksPerSecond;
    spec.channels = 1;
    m_meter = pa_stream_new(m_connection->context(), "Microphone level", &spec, nullptr);
    if (m_meter == nullptr) {
        return;
    }
    pa_stream_set_read_callback(
        m_meter, [](pa_stream *, std::size_t, void *self) { static_cast<PulseMicrophones *>(self)->readMeter(); },
        this);
    pa_buffer_attr attributes{};
    attributes.maxlength = attributes.tlength = attributes.prebuf = attributes.minreq = static_cast<quint32>(-1);
    attributes.fragsize = sizeof(float);
    // The server sends the loudest sample of each interval; that costs next to nothing.
    const auto flags =
        static_cast<pa_stream_flags_t>(PA_STREAM_DONT_MOVE | PA_STREAM_PEAK_DETECT | PA_STREAM_ADJUST_LATENCY);
    pa_stream_connect_record(m_meter, name.toUtf8().constData(), &attributes, flags);
}

void PulseMicrophones::readMeter()
{
    float loudest = 0;
    bool hasSamples = false;
    while (pa_stream_readable_size(m_meter) > 0) {
        const void *data = nullptr;
        std::size_t byteCount = 0;
        if (pa_stream_peek(m_meter, &data, &byteCount) < 0 || byteCount == 0) {
            break;
        }
        hasSamples = true;
        if (data != nullptr) { // Otherwise a gap.
            for (const float sample : std::span(static_cast<const float *>(data), byteCount / sizeof(float))) {
                loudest = std::max(loudest, std::abs(sample));
            }
        }
        pa_stream_drop(m_meter);
    }
    if (hasSamples) {
        m_onPeak(std::min(loudest, 1.0F));
    }
}

} // namespace talmo
