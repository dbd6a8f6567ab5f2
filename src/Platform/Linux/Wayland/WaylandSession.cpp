#include "Platform/Linux/Wayland/WaylandSession.h"

#include "Base/Log.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>

#include <poll.h>

namespace talmo {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

/// Long enough for a compositor that has just started, on a machine that is busy starting everything else: without it,
/// Talmo is deaf to all Wayland windows until it is started again.
constexpr auto openingTime = 10s;
constexpr auto synchronisingTime = 1s;

/// A reader that closes its end of a pipe early is no reason to end Talmo.
void blockPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void setFlag(void *flag, wl_callback *callback, uint32_t /*serial*/)
{
    *static_cast<bool *>(flag) = true;
    wl_callback_destroy(callback);
}

constexpr wl_callback_listener flagListener = {setFlag};

} // namespace

std::shared_ptr<WaylandSession> WaylandSession::open()
{
    // Without a name, the library would take the user's first Wayland session, even from within an X session.
    auto *display = qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ? nullptr : wl_display_connect(nullptr);
    if (display == nullptr) {
        return nullptr;
    }
    std::shared_ptr<WaylandSession> session(new WaylandSession(display));
    const bool isOpen = session->m_executor->call([raw = session.get()] { return raw->openOnThread(); }).result();
    if (!isOpen) {
        generalLog().error("the Wayland compositor does not respond");
    }
    return isOpen ? session : nullptr;
}

WaylandSession::WaylandSession(wl_display *display)
    : m_display(display),
      m_executor(SerialExecutor::onNewThread(QStringLiteral("talmo-wayland")))
{
}

WaylandSession::~WaylandSession()
{
    m_executor->call([this] { closeOnThread(); }).waitForFinished();
}

void WaylandSession::closeOnThread()
{
    m_readable.reset();
    m_writable.reset();
    for (const auto &awaited : m_awaited) {
        wl_callback_destroy(awaited.callback);
    }
    if (m_seat != nullptr) {
        wl_seat_destroy(m_seat);
    }
    if (m_registry != nullptr) {
        wl_registry_destroy(m_registry);
    }
    wl_display_disconnect(m_display);
}

bool WaylandSession::openOnThread()
{
    blockPipeSignal();
    static constexpr wl_registry_listener listener = {
        [](void *self, wl_registry *, uint32_t name, const char *interface, uint32_t version) {
            auto &session = *static_cast<WaylandSession *>(self);
            if (!session.m_isOpen) { // Read on any thread from then on.
                session.m_globals.push_back({name, interface, version});
            }
        },
        [](void *, wl_registry *, uint32_t) {}};
    m_registry = wl_display_get_registry(m_display);
    wl_registry_add_listener(m_registry, &listener, this);
    bool isDone = false;
    auto *callback = wl_display_sync(m_display);
    wl_callback_add_listener(callback, &flagListener, &isDone);
    if (!readUntil([&isDone] { return isDone; }, openingTime)) {
        wl_callback_destroy(callback);
        return false;
    }
    m_isOpen = true;
    m_seat = bind<wl_seat>(wl_seat_interface, 1);
    m_readable = std::make_unique<QSocketNotifier>(wl_display_get_fd(m_display), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(), [this] {
        readEvents(0);
        flush();
    });
    m_writable = std::make_unique<QSocketNotifier>(wl_display_get_fd(m_display), QSocketNotifier::Write);
    m_writable->setEnabled(false);
    QObject::connect(m_writable.get(), &QSocketNotifier::activated, m_writable.get(), [this] { flush(); });
    flush();
    return true;
}

quint32 WaylandSession::offeredVersion(const QByteArray &interfaceName) const
{
    const auto found = std::find_if(m_globals.begin(), m_globals.end(),
                                    [&](const Global &global) { return global.interface == interfaceName; });
    return found != m_globals.end() ? found->version : 0;
}

void *WaylandSession::bindProxy(const wl_interface &interface, quint32 version) const
{
    const auto found = std::find_if(m_globals.begin(), m_globals.end(),
                                    [&](const Global &global) { return global.interface == interface.name; });
    return found != m_globals.end()
               ? wl_registry_bind(m_registry, found->name, &interface, std::min(version, found->version))
               : nullptr;
}

void WaylandSession::flush()
{
    const bool isFull = wl_display_flush(m_display) < 0 && errno == EAGAIN;
    if (m_writable) {
        m_writable->setEnabled(isFull);
    }
    noteIfBroken();
}

bool WaylandSession::readEvents(int timeout)
{
    while (wl_display_prepare_read(m_display) != 0) {
        if (wl_display_dispatch_pending(m_display) < 0) {
            noteIfBroken();
            return false;
        }
    }
    wl_display_flush(m_display);
    pollfd socket{wl_display_get_fd(m_display), POLLIN, 0};
    const bool hasArrived = poll(&socket, 1, timeout) > 0;
    if (hasArrived) {
        wl_display_read_events(m_display);
    } else {
        wl_display_cancel_read(m_display);
    }
    wl_display_dispatch_pending(m_display);
    noteIfBroken();
    return hasArrived;
}

bool WaylandSession::readUntil(const std::function<bool()> &condition, std::chrono::milliseconds timeout)
{
    const auto deadline = SteadyClock::now() + timeout;
    while (!condition()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - SteadyClock::now());
        if (left.count() <= 0 || wl_display_get_error(m_display) != 0) {
            return false;
        }
        readEvents(static_cast<int>(left.count()));
    }
    return true;
}

void WaylandSession::synchronise()
{
    bool isDone = false;
    auto *callback = wl_display_sync(m_display);
    wl_callback_add_listener(callback, &flagListener, &isDone);
    if (!readUntil([&isDone] { return isDone; }, synchronisingTime)) {
        wl_callback_destroy(callback);
    }
    flush();
}

void WaylandSession::whenCarriedOut(std::function<void()> callback)
{
    static constexpr wl_callback_listener listener = {handleCarriedOut};
    auto *done = wl_display_sync(m_display);
    wl_callback_add_listener(done, &listener, this);
    m_awaited.push_back({done, std::move(callback)});
    flush();
}

void WaylandSession::handleCarriedOut(void *self, wl_callback *callback, uint32_t /*serial*/)
{
    auto &awaited = static_cast<WaylandSession *>(self)->m_awaited;
    const auto function = std::move(awaited.front().function); // They are carried out in order.
    awaited.pop_front();
    wl_callback_destroy(callback);
    function();
}

void WaylandSession::noteIfBroken()
{
    if (m_isBroken || wl_display_get_error(m_display) == 0) {
        return;
    }
    m_isBroken = true;
    if (m_readable) { // The end of file would wake the thread endlessly.
        m_readable->setEnabled(false);
        m_writable->setEnabled(false);
    }
    generalLog().error("the connection to the Wayland compositor was lost");
    for (const auto &callback : m_onConnectionLost) {
        callback();
    }
}

} // namespace talmo
