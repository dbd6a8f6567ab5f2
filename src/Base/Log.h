#pragma once

#include <QString>
#include <QVariant>

#include <initializer_list>
#include <memory>

namespace talmo {

/// Debug lines may hold what was dictated; info and error lines never do.
enum class LogLevel { Debug, Info, Error };

/// Where log lines go. Any thread may write.
class LogSink {
public:
    virtual ~LogSink() = default;

    /// Asked first, so that a line nobody reads is never put together.
    virtual bool isEnabled(LogLevel level, const char *category) const = 0;

    /// `format` is the literal as written in the source; the arguments stay apart, since they are private.
    virtual void write(LogLevel level, const char *category, const char *format,
                       std::initializer_list<QVariant> arguments) = 0;
};

/// One category of the log. Placeholders: %s, %@ (text), %lu (unsigned number), %{bool}d (true or false).
class Logger {
public:
    explicit constexpr Logger(const char *category)
        : m_category(category)
    {
    }

    void debug(const char *format, std::initializer_list<QVariant> arguments = {}) const;
    void info(const char *format, std::initializer_list<QVariant> arguments = {}) const;
    void error(const char *format, std::initializer_list<QVariant> arguments = {}) const;

private:
    void write(LogLevel level, const char *format, std::initializer_list<QVariant> arguments) const;

    const char *m_category;
};

/// "general": the pipeline's messages and whatever has no category of its own.
const Logger &generalLog();
/// "hotkey": the key monitoring.
const Logger &hotkeyLog();

/// Replaces the sink for the whole process and gives back the one before; null stands for Qt's own log, which goes to
/// the journal where there is one and to stderr elsewhere, with debug lines off unless switched on there.
std::shared_ptr<LogSink> setLogSink(std::shared_ptr<LogSink> sink);

/// The line with its arguments filled in.
QString formatLogLine(const char *format, std::initializer_list<QVariant> arguments);

} // namespace talmo
