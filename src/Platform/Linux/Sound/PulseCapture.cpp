#include "Platform/Linux/Sound/PulseCapture.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

/// The server's sending interval: short, so that little is in flight when the key is released.
constexpr auto fragmentTime = 10ms;
/// The longest wait for audio in flight.
constexpr auto deliveryTime = 30ms;
/// Appended to the speech to flush a resampler with a delay of some milliseconds.
constexpr auto trailingSilence = 10ms;
constexpr auto stallTime = 1500ms;

quint32 framesIn(const AudioFormat &format, std::chrono::microseconds time)
{
    return static_cast<quint32>(format.sampleRate * static_cast<double>(time.count()) / 1e6);
}

} // namespace

PulseCapture::PulseCapture(std::shared_ptr<PulseConnection> connection, const PulseSource &source,
                           std::function<void()> onUnplugged)
    : m_connection(std::move(connection)),
      m_format(source.format),
      m_onUnplugged(std::move(onUnplugged)),
      m_kept(qsizetype(framesIn(source.format, longestKept)) * source.format.bytesPerFrame())
{
}

std::unique_ptr<PulseCapture> PulseCapture::open(std::shared_ptr<PulseConnection> connection, const PulseSource &source,
                                                 bool isDefault, std::function<void()> onUnplugged,
                                                 PulseConnection::Deadline deadline)
{
    std::unique_ptr<PulseCapture> capture(new PulseCapture(std::move(connection), source, std::move(onUnplugged)));
    auto &link = *capture->m_connection;
    const PulseConnection::Lock lock(link.loop());
    capture->connectStream(source, isDefault);
    const bool answered = link.waitUntil(deadline, [&capture] {
        const auto state = pa_stream_get_state(capture->m_stream);
        return state == PA_STREAM_READY || !PA_STREAM_IS_GOOD(state);
    });
    if (!answered) {
        throw Error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The sound server is not responding. Try again in a moment.")));
    }
    if (!capture->isReady()) {
        throw Error(link.errorText());
    }
    capture->noteDevice();
    return capture;
}

void PulseCapture::connectStream(const PulseSource &source, bool isDefault)
{
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32NE;
    spec.rate = static_cast<quint32>(m_format.sampleRate);
    spec.channels = static_cast<quint8>(m_format.channelCount);
    pa_channel_map channels{}; // The library's own choice ends at six channels.
    pa_channel_map_init_extend(&channels, spec.channels, PA_CHANNEL_MAP_DEFAULT);
    m_stream = pa_stream_new(m_connection->context(), "Dictation", &spec, &channels);
    if (m_stream == nullptr) {
        throw Error(m_connection->errorText());
    }
    pa_stream_set_state_callback(
        m_stream, [](pa_stream *, void *self) { static_cast<PulseCapture *>(self)->stateChanged(); }, this);
    pa_stream_set_moved_callback(
        m_stream, [](pa_stream *, void *self) { static_cast<PulseCapture *>(self)->moved(); }, this);
    pa_stream_set_read_callback(
        m_stream, [](pa_stream *, std::size_t, void *self) { static_cast<PulseCapture *>(self)->takeData(); }, this);
    pa_buffer_attr attributes{};
    attributes.maxlength = attributes.tlength = attributes.prebuf = attributes.minreq = static_cast<quint32>(-1);
    attributes.fragsize = framesIn(m_format, fragmentTime) * static_cast<quint32>(m_format.bytesPerFrame());
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_ADJUST_LATENCY |
                                                      PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_INTERPOLATE_TIMING);
    const char *device = isDefault ? nullptr : source.name.constData();
    if (pa_stream_connect_record(m_stream, device, &attributes, flags) < 0) {
        throw Error(m_connection->errorText());
    }
}

void PulseCapture::stateChanged()
{
    const bool isServerThere = pa_context_get_state(m_connection->context()) == PA_CONTEXT_READY;
    if (!m_device.isEmpty() && isServerThere && !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream))) {
        noteUnplugged();
    }
    m_connection->wake();
}

void PulseCapture::noteDevice()
{
    m_device = pa_stream_get_device_name(m_stream);
}

/// Either the user has moved the stream, or the server has because the source disappeared: the stream then continues
/// with any other source, which may be silent. Whether the old source still exists distinguishes the two.
void PulseCapture::moved()
{
    if (m_deviceQuery != nullptr) {
        pa_operation_cancel(m_deviceQuery);
        pa_operation_unref(m_deviceQuery);
    }
    m_isDeviceFound = false;
    m_deviceQuery = pa_context_get_source_info_by_name(
        m_connection->context(), m_device.constData(),
        [](pa_context *, const pa_source_info *info, int endOfList, void *data) {
            auto *self = static_cast<PulseCapture *>(data);
            self->m_isDeviceFound = self->m_isDeviceFound || info != nullptr;
            if (endOfList != 0 && !self->m_isDeviceFound) {
                self->noteUnplugged();
            } else if (endOfList != 0) {
                self->noteDevice();
            }
        },
        this);
}

void PulseCapture::noteUnplugged()
{
    if (!std::exchange(m_isUnplugged, true)) {
        generalLog().error("the microphone was unplugged");
        m_onUnplugged();
    }
    m_connection->wake();
}

bool PulseCapture::isUnplugged() const
{
    const PulseConnection::Lock lock(m_connection->loop());
    return m_isUnplugged;
}

PulseCapture::~PulseCapture()
{
    if (m_stream == nullptr) {
        return;
    }
    const PulseConnection::Lock lock(m_connection->loop());
    pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    pa_stream_set_read_callback(m_stream, nullptr, nullptr);
    pa_stream_set_moved_callback(m_stream, nullptr, nullptr);
    if (m_deviceQuery != nullptr) {
        pa_operation_cancel(m_deviceQuery);
        pa_operation_unref(m_deviceQuery);
    }
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
}

void PulseCapture::begin(std::unique_ptr<AudioReblocker> blocks)
{
    const PulseConnection::Lock lock(m_connection->loop());
    for (const auto &piece : m_kept.take()) {
        blocks->append(piece.constData(), piece.size());
    }
    m_isKeeping = false;
    m_blocks = std::move(blocks);
    m_lastData = std::chrono::steady_clock::now();
    cork(false);
}

void PulseCapture::cork(bool isCorked)
{
    if (auto *operation = pa_stream_cork(m_stream, isCorked ? 1 : 0, nullptr, nullptr)) {
        pa_operation_unref(operation);
    }
}

void PulseCapture::keep()
{
    const PulseConnection::Lock lock(m_connection->loop());
    if (!m_blocks) {
        m_isKeeping = true;
        cork(false);
    }
}

void PulseCapture::pauseKeeping()
{
    const PulseConnection::Lock lock(m_connection->loop());
    if (!m_blocks && std::exchange(m_isKeeping, false)) {
        cork(true);
    }
}

void PulseCapture::discardKept()
{
    const PulseConnection::Lock lock(m_connection->loop());
    m_kept.clear();
    if (!m_blocks && std::exchange(m_isKeeping, false)) {
        cork(true);
        if (auto *operation = pa_stream_flush(m_stream, nullptr, nullptr)) {
            pa_operation_unref(operation);
        }
    }
}

void PulseCapture::end()
{
    const PulseConnection::Lock lock(m_connection->loop());
    if (!m_blocks) {
        return;
    }
    const auto wanted = m_blocks->frameCount() + framesUnderway();
    if (isReady()) {
        m_connection->waitUntil(std::chrono::steady_clock::now() + deliveryTime,
                                [this, wanted] { return m_blocks->frameCount() >= wanted || !isReady(); });
    } else {
        generalLog().error("lost the microphone while recording; the audio so far is kept");
    }
    // Taken out first, so that nothing called from the handler sees a running recording.
    const auto blocks = std::exchange(m_blocks, nullptr);
    blocks->flush(framesIn(m_format, trailingSilence));
}

bool PulseCapture::isRunning() const
{
    const PulseConnection::Lock lock(m_connection->loop());
    return m_blocks != nullptr;
}

bool PulseCapture::isAlive() const
{
    const PulseConnection::Lock lock(m_connection->loop());
    return isReady();
}

bool PulseCapture::isStalled() const
{
    const PulseConnection::Lock lock(m_connection->loop());
    return std::chrono::steady_clock::now() - m_lastData > stallTime;
}

bool PulseCapture::isReady() const
{
    return !m_isUnplugged && pa_stream_get_state(m_stream) == PA_STREAM_READY;
}

void PulseCapture::takeData()
{
    while (pa_stream_readable_size(m_stream) > 0) {
        const void *data = nullptr;
        std::size_t byteCount = 0;
        if (pa_stream_peek(m_stream, &data, &byteCount) < 0 || byteCount == 0) {
            break;
        }
        if (m_blocks && !m_isUnplugged) { // Later audio is from another source, which the user has not chosen.
            // A null pointer with a length is a gap in the recording: silence.
            m_blocks->append(static_cast<const char *>(data), static_cast<qsizetype>(byteCount));
            m_lastData = std::chrono::steady_clock::now();
        } else if (m_isKeeping && !m_isUnplugged) {
            m_kept.append(static_cast<const char *>(data), static_cast<qsizetype>(byteCount));
        }
        pa_stream_drop(m_stream);
    }
    m_connection->wake();
}

/// The captured frames that have not arrived yet, from the latency that the server reports.
quint64 PulseCapture::framesUnderway() const
{
    pa_usec_t latency = 0;
    int isNegative = 0;
    if (pa_stream_get_latency(m_stream, &latency, &isNegative) < 0) {
        return framesIn(m_format, deliveryTime);
    }
    return isNegative != 0 ? 0 : framesIn(m_format, std::chrono::microseconds(latency));
}

} // namespace talmo
