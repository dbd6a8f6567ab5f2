#include "Platform/Linux/Sound/PulseAudioEngine.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace talmo {

namespace {

PulseConnection::Deadline soon()
{
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
}

/// Less than one step of 16 bits is the silence of a muted microphone: an open one is never that quiet.
bool hasSound(const AudioBuffer &buffer)
{
    constexpr float quietest = 1.0F / 32768;
    const std::span samples(reinterpret_cast<const float *>(buffer.data()), // NOLINT: the format is Float32.
                            static_cast<std::size_t>(buffer.byteLength()) / sizeof(float));
    return std::any_of(samples.begin(), samples.end(), [](float sample) { return std::abs(sample) >= quietest; });
}

/// In seconds. Some microphones take a moment to open, so a short recording proves nothing.
constexpr double leastSilence = 0.5;

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
        return querySource(deadline).format;
    } catch (const Error &error) {
        generalLog().error("no sound server: %@", {error.localizedDescription()});
        const std::lock_guard lock(m_mutex);
        m_report = {MicrophoneReport::Finding::NoServer, {}};
        m_capture.reset();
        m_connection.reset();
        return {};
    }
}

PulseSource PulseAudioEngine::querySource(PulseConnection::Deadline deadline)
{
    const auto connection = ensureConnection(deadline);
    QByteArray chosen;
    {
        const std::lock_guard lock(m_mutex);
        chosen = m_chosen;
    }
    PulseSource source = chosen.isEmpty() ? PulseSource() : connection->sourceNamed(chosen, deadline);
    const bool isDefault = source.format.channelCount == 0;
    noteChosenMissing(isDefault && !chosen.isEmpty());
    if (isDefault) {
        source = connection->defaultSource(deadline);
    }
    const std::lock_guard lock(m_mutex);
    if (m_capture && (source.name != m_source.name || source.format != m_source.format || isDefault != m_isDefault)) {
        m_capture.reset(); // Prepared for another microphone.
    }
    m_source = source;
    m_isDefault = isDefault;
    m_report = {MicrophoneReport::Finding::Fine, source.title};
    return source;
}

void PulseAudioEngine::noteChosenMissing(bool isMissing)
{
    if (m_isChosenMissing.exchange(isMissing) == isMissing) {
        return;
    }
    if (isMissing) {
        generalLog().info("the chosen microphone is not connected; using the default one");
    }
    if (m_onChosenMissing) {
        m_onChosenMissing(isMissing);
    }
}

void PulseAudioEngine::chooseMicrophone(const QString &name)
{
    const std::lock_guard lock(m_mutex);
    m_chosen = name.toUtf8();
}

MicrophoneReport PulseAudioEngine::report() const
{
    const std::lock_guard lock(m_mutex);
    return m_report;
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
    m_heard = std::make_shared<Heard>();
    m_blocks = std::make_unique<AudioReblocker>(
        m_source.format, bufferSize,
        [heard = m_heard, handler = std::move(handler)](const auto &buffer, const AudioTime &time) {
            heard->frames += buffer->frameLength();
            if (!heard->hasSound && hasSound(*buffer)) {
                heard->hasSound = true;
            }
            handler(buffer, time);
        });
}

void PulseAudioEngine::prepare()
{
    // Everything is prepared at first use.
}

std::unique_ptr<PulseCapture> PulseAudioEngine::openCapture(PulseConnection::Deadline deadline)
{
    std::shared_ptr<PulseConnection> connection;
    PulseSource source;
    bool isDefault = true;
    {
        const std::lock_guard lock(m_mutex);
        connection = m_connection;
        source = m_source;
        isDefault = m_isDefault;
    }
    if (!connection) {
        throw Error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The connection to the sound server was lost. Try again.")));
    }
    const auto onUnplugged = [this] {
        if (m_onUnplugged) {
            m_onUnplugged();
        }
    };
    return PulseCapture::open(connection, source, isDefault, onUnplugged, deadline);
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
        if (m_capture->isUnplugged()) {
            m_report.finding = MicrophoneReport::Finding::Unplugged;
        } else if (!m_connection || !m_connection->isAlive()) {
            m_report.finding = MicrophoneReport::Finding::NoServer;
        } else if (!m_heard->hasSound &&
                   static_cast<double>(m_heard->frames) >= leastSilence * m_source.format.sampleRate) {
            m_report.finding = MicrophoneReport::Finding::OnlySilence;
        }
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
