#include "Platform/Linux/Sound/PulseConnection.h"

#include <algorithm>

namespace talmo {

namespace {

pa_usec_t monotonicMicroseconds(PulseConnection::Deadline time)
{
    const auto since = std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch());
    return static_cast<pa_usec_t>(since.count());
}

struct SourceQuery {
    PulseConnection *connection;
    PulseSource source;
    bool done = false;

    static void answer(pa_context *, const pa_source_info *info, int endOfList, void *data)
    {
        auto *query = static_cast<SourceQuery *>(data);
        if (info != nullptr && info->monitor_of_sink == PA_INVALID_INDEX) {
            query->source.name = info->name;
            query->source.title = QString::fromUtf8(info->description);
            query->source.format = {static_cast<double>(info->sample_spec.rate), info->sample_spec.channels,
                                    SampleType::Float32};
        }
        if (endOfList != 0) {
            query->done = true;
            query->connection->wake();
        }
    }
};

} // namespace

PulseConnection::PulseConnection()
    : m_loop(pa_threaded_mainloop_new())
{
    pa_threaded_mainloop_set_name(m_loop, "talmo-capture");
}

std::unique_ptr<PulseConnection> PulseConnection::open(Deadline deadline)
{
    std::unique_ptr<PulseConnection> connection(new PulseConnection);
    auto *loop = connection->m_loop;
    connection->m_context = pa_context_new(pa_threaded_mainloop_get_api(loop), "Talmo");
    auto *context = connection->m_context;
    pa_context_set_state_callback(
        context, [](pa_context *, void *data) { static_cast<PulseConnection *>(data)->wake(); }, connection.get());
    if (pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 ||
        pa_threaded_mainloop_start(loop) < 0) {
        throw Error(connection->errorText());
    }
    const Lock lock(loop);
    const bool answered = connection->waitUntil(deadline, [context] {
        const auto state = pa_context_get_state(context);
        return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    });
    if (!answered) {
        throw Error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The sound server is not responding. Try again in a moment.")));
    }
    if (pa_context_get_state(context) != PA_CONTEXT_READY) {
        if (pa_context_errno(context) == PA_ERR_ACCESS) {
            throw SoundAccessRefused(connection->errorText());
        }
        throw Error(connection->errorText());
    }
    return connection;
}

PulseConnection::~PulseConnection()
{
    if (m_context != nullptr) {
        const Lock lock(m_loop);
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
    }
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

bool PulseConnection::isAlive() const
{
    const Lock lock(m_loop);
    return pa_context_get_state(m_context) == PA_CONTEXT_READY;
}

PulseSource PulseConnection::defaultSource(Deadline deadline)
{
    return querySource(nullptr, deadline);
}

PulseSource PulseConnection::sourceNamed(const QByteArray &name, Deadline deadline)
{
    return querySource(name.constData(), deadline);
}

PulseSource PulseConnection::querySource(const char *name, Deadline deadline)
{
    const Lock lock(m_loop);
    SourceQuery query{this, {}, false};
    auto *operation = pa_context_get_source_info_by_name(m_context, name, &SourceQuery::answer, &query);
    if (operation == nullptr) {
        throw Error(errorText());
    }
    const bool answered = waitUntil(
        deadline, [this, &query] { return query.done || pa_context_get_state(m_context) != PA_CONTEXT_READY; });
    pa_operation_cancel(operation);
    pa_operation_unref(operation);
    if (!answered || !query.done) {
        throw Error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The sound server is not responding. Try again in a moment.")));
    }
    return query.source;
}

bool PulseConnection::waitUntil(Deadline deadline, const std::function<bool()> &isDone)
{
    auto *timer = pa_context_rttime_new(
        m_context, monotonicMicroseconds(deadline),
        [](pa_mainloop_api *, pa_time_event *, const struct timeval *, void *data) {
            static_cast<PulseConnection *>(data)->wake();
        },
        this);
    bool done = isDone();
    while (!done && std::chrono::steady_clock::now() < deadline) {
        pa_threaded_mainloop_wait(m_loop);
        done = isDone();
    }
    if (timer != nullptr) {
        pa_threaded_mainloop_get_api(m_loop)->time_free(timer);
    }
    return done;
}

QString PulseConnection::errorText() const
{
    return QString::fromUtf8(pa_strerror(m_context != nullptr ? pa_context_errno(m_context) : PA_ERR_UNKNOWN));
}

} // namespace talmo
