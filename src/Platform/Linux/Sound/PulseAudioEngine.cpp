#include "Platform/Linux/Sound/PulseAudioEngine.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <utility>

namespace talmo {

namespace {

PulseConnection::Deadline soon()
{
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
}

} // namespace

PulseAudioEngine::~PulseAudioEngine() = default;

std::shared_ptr<PulseConnection> PulseAudioEngine::ensureConnection(PulseConnection::Deadline deadline)
{
    std::shared_ptr<PulseConnection> connection;
    {
        const std::lock_guard lock(m_mutex);
        connection = m_connection;
    }
    if (connection && connection->isAlive()) {
        return connection;
    }
    try {
        connection = PulseConnection::open(deadline);
        noteAccess(false);
    } catch (const SoundAccessRefused &) {
        noteAccess(true);
        throw;
    }
    const std::lock_guard lock(m_mutex);
    m_capture.reset();
    m_connection = connection;
    return connection;
}

void PulseAudioEngine::noteAccess(bool isRefused)
{
    if (m_isAccessRefused.exchange(isRefused) != isRefused && m_onAccessChanged) {
        m_onAccessChanged();
    }
}

bool PulseAudioEngine::askForAccess()
{
    try {
        ensureConnection(soon());
    } catch (const Error &) { // NOLINT(bugprone-empty-catch): a missing server is no refusal; a refusal is noted.
    }
    return !isAccessRefused();
}

AudioFormat PulseAudioEngine::inputFormat()
{
    const auto deadline = soon();
    try {
        const auto source = ensureConnection(deadline)->defaultSource(deadline);
        const std::lock_guard lock(m_mutex);
        if (m_capture && (source.name != m_source.name || source.format != m_source.format)) {
            m_capture.reset(); // Prepared for another microphone.
        }
        m_source = source;
        return source.format;
    } catch (const Error &error) {
        generalLog().error("no sound server: %@", {error.localizedDescription()});
        const std::lock_guard lock(m_mutex);
        m_capture.reset();
        m_connection.reset();
        return {};
    }
}

QString PulseAudioEngine::sourceName() const
{
    const std::lock_guard lock(m_mutex);
    return QString::fromUtf8(m_source.name);
}

void PulseAudioEngine::installTap(quint32 bufferSize, AudioBufferHandler handler)
{
    const std::lock_guard lock(m_mutex);
    if (m_source.format.bytesPerFrame() == 0 || bufferSize == 0) {
        throw Error(QStringLiteral("installTap() called before inputFormat()."));
    }
    m_blocks = std::make_unique<AudioReblocker>(m_source.format, bufferSize, std::move(handler));
}

void PulseAudioEngine::prepare()
{
    // Everything is prepared at first use.
}

std::unique_ptr<PulseCapture> PulseAudioEngine::openCapture(PulseConnection::Deadline deadline)
{
    std::shared_ptr<PulseConnection> connection;
    PulseSource source;
    {
        const std::lock_guard lock(m_mutex);
        connection = m_connection;
        source = m_source;
    }
    if (!connection) {
        throw Error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The connection to the sound server was lost. Try again.")));
    }
    return PulseCapture::open(connection, source, deadline);
}

void PulseAudioEngine::start()
{
    bool isReady = false;
    {
        const std::lock_guard lock(m_mutex);
        isReady = m_capture && m_capture->isAlive();
    }
    std::unique_ptr<PulseCapture> fresh = isReady ? nullptr : openCapture(soon());
    const std::lock_guard lock(m_mutex);
    if (fresh) {
        m_capture = std::move(fresh);
    }
    if (!m_capture || !m_blocks) {
        throw Error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The connection to the sound server was lost. Try again.")));
    }
    m_capture->begin(std::move(m_blocks));
}

void PulseAudioEngine::removeTap()
{
    const std::lock_guard lock(m_mutex);
    m_blocks.reset();
    if (m_capture && m_capture->isRunning()) {
        m_capture->end();
    }
}

void PulseAudioEngine::stop()
{
    const std::lock_guard lock(m_mutex);
    if (m_capture && (!m_capture->isAlive() || m_capture->isStalled())) {
        // A server that died or hangs is not asked again: the next recording opens a new connection.
        m_connection.reset();
    }
    m_capture.reset();
}

/// Restarts keeping audio on an existing stream. False if there is none to use; true also while it is recording.
bool PulseAudioEngine::keepAnew()
{
    const std::lock_guard lock(m_mutex);
    if (!m_capture) {
        return false;
    }
    if (m_capture->isRunning()) {
        return true;
    }
    if (!m_capture->isAlive()) {
        return false;
    }
    m_capture->discardKept();
    m_capture->keep();
    return true;
}

void PulseAudioEngine::warmUp()
{
    if (keepAnew() || inputFormat().channelCount == 0) {
        return;
    }
    try {
        auto capture = openCapture(soon());
        capture->keep();
        const std::lock_guard lock(m_mutex);
        m_capture = std::move(capture);
    } catch (const Error &) { // NOLINT(bugprone-empty-catch): start() will report the error.
    }
}

void PulseAudioEngine::pauseKeeping()
{
    const std::lock_guard lock(m_mutex);
    if (m_capture) {
        m_capture->pauseKeeping();
    }
}

void PulseAudioEngine::resumeKeeping()
{
    const std::lock_guard lock(m_mutex);
    if (m_capture) {
        m_capture->keep();
    }
}

void PulseAudioEngine::discardKept()
{
    const std::lock_guard lock(m_mutex);
    if (m_capture) {
        m_capture->discardKept();
    }
}

void PulseAudioEngine::coolDown()
{
    const std::lock_guard lock(m_mutex);
    if (m_capture && !m_capture->isRunning()) {
        m_capture.reset();
    }
}

} // namespace talmo
