#include "MarkerSignal.h"

#include "Base/Error.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

/// All frames up to this one have a sample of their own, exactly, in the 24 bits of a float.
constexpr qint64 frameLimit = 1 << 22;

constexpr pa_sample_spec format{PA_SAMPLE_FLOAT32NE, MarkerSignal::framesPerSecond, 1};

constexpr quint32 bytesIn(std::chrono::milliseconds time)
{
    return static_cast<quint32>(time.count()) * MarkerSignal::framesPerSecond / 1000 * sizeof(float);
}

PulseConnection::Deadline soon()
{
    return std::chrono::steady_clock::now() + 10s;
}

pa_stream *makeStream(const PulseConnection &connection, const char *name)
{
    pa_stream *stream = pa_stream_new(connection.context(), name, &format, nullptr);
    if (stream == nullptr) {
        throw Error(connection.errorText());
    }
    return stream;
}

void close(pa_stream *stream)
{
    if (stream != nullptr) {
        pa_stream_set_write_callback(stream, nullptr, nullptr);
        pa_stream_set_read_callback(stream, nullptr, nullptr);
        pa_stream_set_underflow_callback(stream, nullptr, nullptr);
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
}

} // namespace

MarkerSignal::MarkerSignal()
    : m_connection(PulseConnection::open(soon()))
{
    {
        const PulseConnection::Lock lock(m_connection->loop());
        play();
        listen();
    }
    const auto deadline = soon();
    while (frameNow() <= 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            throw Error(QStringLiteral("The marker signal does not play."));
        }
    }
}

MarkerSignal::~MarkerSignal()
{
    const PulseConnection::Lock lock(m_connection->loop());
    close(m_playback);
    close(m_listener);
}

void MarkerSignal::play()
{
    m_playback = makeStream(*m_connection, "marker");
    pa_stream_set_write_callback(
        m_playback,
        [](pa_stream *, std::size_t byteCount, void *self) { static_cast<MarkerSignal *>(self)->write(byteCount); },
        this);
    pa_stream_set_underflow_callback(
        m_playback, [](pa_stream *, void *self) { static_cast<MarkerSignal *>(self)->m_hasGaps = true; }, this);
    pa_buffer_attr attributes{};
    attributes.maxlength = attributes.prebuf = attributes.minreq = attributes.fragsize = static_cast<quint32>(-1);
    attributes.tlength = bytesIn(500ms);
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE);
    if (pa_stream_connect_playback(m_playback, "speech", &attributes, flags, nullptr, nullptr) < 0) {
        throw Error(m_connection->errorText());
    }
}

/// As long as somebody records, the server renders sound in small pieces, as real hardware does. Left alone, it renders
/// 50 ms at a time, ahead of the moment at which they are heard.
void MarkerSignal::listen()
{
    m_listener = makeStream(*m_connection, "listener");
    pa_stream_set_read_callback(
        m_listener,
        [](pa_stream *stream, std::size_t, void *) {
            const void *data = nullptr;
            std::size_t byteCount = 0;
            while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &byteCount) == 0) {
                pa_stream_drop(stream);
            }
        },
        nullptr);
    pa_buffer_attr attributes{};
    attributes.maxlength = attributes.tlength = attributes.prebuf = attributes.minreq = static_cast<quint32>(-1);
    attributes.fragsize = bytesIn(5ms);
    if (pa_stream_connect_record(m_listener, "speech.monitor", &attributes, PA_STREAM_ADJUST_LATENCY) < 0) {
        throw Error(m_connection->errorText());
    }
}

void MarkerSignal::write(std::size_t byteCount)
{
    std::vector<float> samples(byteCount / sizeof(float));
    for (auto &sample : samples) {
        ++m_written; // Silence belongs to no frame, so the first one is not 0.
        sample = static_cast<float>(std::min(m_written, frameLimit - 1)) / static_cast<float>(frameLimit);
    }
    pa_stream_write(m_playback, samples.data(), samples.size() * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE);
}

qint64 MarkerSignal::frameNow()
{
    const PulseConnection::Lock lock(m_connection->loop());
    if (auto *update = pa_stream_update_timing_info(
            m_playback, [](pa_stream *, int, void *self) { static_cast<MarkerSignal *>(self)->m_connection->wake(); },
            this)) {
        m_connection->waitUntil(soon(), [update] { return pa_operation_get_state(update) != PA_OPERATION_RUNNING; });
        pa_operation_unref(update);
    }
    pa_usec_t heard = 0;
    return pa_stream_get_time(m_playback, &heard) < 0 ? 0 : static_cast<qint64>(heard) * framesPerSecond / 1'000'000;
}

std::optional<qint64> MarkerSignal::frameOf(float sample)
{
    return sample == 0 ? std::nullopt
                       : std::optional(std::llround(static_cast<double>(sample) * static_cast<double>(frameLimit)) - 1);
}

bool MarkerSignal::hasGaps() const
{
    const PulseConnection::Lock lock(m_connection->loop());
    return m_hasGaps;
}

} // namespace talmo::testbed
