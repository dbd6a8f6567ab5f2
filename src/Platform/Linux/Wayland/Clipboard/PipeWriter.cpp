#include "Platform/Linux/Wayland/Clipboard/PipeWriter.h"

#include <cerrno>
#include <chrono>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace talmo {

namespace {

constexpr std::chrono::seconds longestPause{5};

} // namespace

PipeWriter::PipeWriter(FileDescriptor pipe, QByteArray data, std::function<void(bool)> onEnd)
    : m_pipe(std::move(pipe)),
      m_data(std::move(data)),
      m_onEnd(std::move(onEnd))
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(longestPause);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { end(false); });
}

void PipeWriter::start()
{
    fcntl(m_pipe.get(), F_SETFL, fcntl(m_pipe.get(), F_GETFL) | O_NONBLOCK); // NOLINT(hicpp-signed-bitwise)
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe.get(), QSocketNotifier::Write);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { write(); });
    m_patience.start();
    write();
}

void PipeWriter::write()
{
    while (m_position < m_data.size()) {
        const auto count =
            ::write(m_pipe.get(), m_data.constData() + m_position, static_cast<size_t>(m_data.size() - m_position));
        if (count > 0) {
            m_position += count;
            m_patience.start();
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != EINTR) {
            end(false);
            return;
        }
    }
    end(true);
}

void PipeWriter::end(bool isComplete)
{
    m_patience.stop();
    m_notifier->setEnabled(false);
    m_pipe = FileDescriptor();
    std::exchange(m_onEnd, {})(isComplete);
}

} // namespace talmo
