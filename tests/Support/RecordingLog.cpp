#include "Support/RecordingLog.h"

namespace talmo::test {

class RecordingLog::Sink final : public LogSink {
public:
    bool isEnabled(LogLevel, const char *) const override { return true; }

    void write(LogLevel level, const char *category, const char *format,
               std::initializer_list<QVariant> arguments) override
    {
        static const char *const names[] = {"debug", "info", "error"};
        const std::lock_guard lock(mutex);
        lines.push_back(QStringLiteral("%1 %2: %3")
                            .arg(QString::fromLatin1(category), QString::fromLatin1(names[static_cast<int>(level)]),
                                 formatLogLine(format, arguments)));
        formats.push_back(QString::fromUtf8(format));
    }

    std::mutex mutex;
    std::vector<QString> lines;
    std::vector<QString> formats;
};

RecordingLog::RecordingLog()
    : m_sink(std::make_shared<Sink>()),
      m_previous(setLogSink(m_sink))
{
}

RecordingLog::~RecordingLog()
{
    setLogSink(m_previous);
}

std::vector<QString> RecordingLog::lines() const
{
    const std::lock_guard lock(m_sink->mutex);
    return m_sink->lines;
}

std::vector<QString> RecordingLog::formats() const
{
    const std::lock_guard lock(m_sink->mutex);
    return m_sink->formats;
}

} // namespace talmo::test
