#pragma once

#include <QString>
#include <QVariant>

#include <initializer_list>
#include <memory>

namespace talmo {

/// Debug lines may contain dictated text; info and error lines never do.
enum class LogLevel { Debug, Info, Error };

/// Where log lines go. Any thread may write.
class LogSink {
public:
    virtual ~LogSink() = default;

    /// Checked first, so that disabled lines are never formatted.
    virtual bool isEnabled(LogLevel level, const char *category) const = 0;

    /// `format` is the literal from the source; the arguments are passed separately because they are private.
    virtual void write(LogLevel level, const char *category, const char *format,
                       std::initializer_list<QVariant> arguments) = 0;
};

/// A log category. Placeholders: %s, %@ (text), %lu (unsigned number), %{bool}d (true or false).
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

/// "general": pipeline messages and everything without its own category.
const Logger &generalLog();
/// "hotkey": key monitoring.
const Logger &hotkeyLog();

/// Replaces the process-wide sink and returns the previous one. Null selects Qt's logging, which goes to the journal if
/// there is one and to stderr otherwise, with debug lines off unless Qt's logging rules enable them.
std::shared_ptr<LogSink> setLogSink(std::shared_ptr<LogSink> sink);

/// The line with its arguments filled in.
QString formatLogLine(const char *format, std::initializer_list<QVariant> arguments);

} // namespace talmo
