#include "Base/Log.h"

#include <QLoggingCategory>

#include <mutex>
#include <string_view>
#include <utility>

namespace talmo {

namespace {

// Transcripts are private, so debug lines are off unless enabled by Qt's logging rules.
Q_LOGGING_CATEGORY(generalCategory, "talmo.general", QtInfoMsg)
Q_LOGGING_CATEGORY(hotkeyCategory, "talmo.hotkey", QtInfoMsg)

class QtLogSink final : public LogSink {
public:
    bool isEnabled(LogLevel level, const char *name) const override
    {
        switch (level) {
        case LogLevel::Debug:
            return category(name).isDebugEnabled();
        case LogLevel::Info:
            return category(name).isInfoEnabled();
        case LogLevel::Error:
            break;
        }
        return category(name).isCriticalEnabled();
    }

    void write(LogLevel level, const char *name, const char *format, std::initializer_list<QVariant> arguments) override
    {
        const QMessageLogger logger(nullptr, 0, nullptr, category(name).categoryName());
        const QString line = formatLogLine(format, arguments);
        switch (level) {
        case LogLevel::Debug:
            logger.debug().noquote() << line;
            break;
        case LogLevel::Info:
            logger.info().noquote() << line;
            break;
        case LogLevel::Error:
            logger.critical().noquote() << line;
            break;
        }
    }

private:
    static const QLoggingCategory &category(std::string_view name)
    {
        return name == "hotkey" ? hotkeyCategory() : generalCategory();
    }
};

struct SinkHolder {
    std::mutex mutex;
    std::shared_ptr<LogSink> sink = std::make_shared<QtLogSink>();
};

SinkHolder &holder()
{
    static SinkHolder instance;
    return instance;
}

std::shared_ptr<LogSink> currentSink()
{
    const std::lock_guard lock(holder().mutex);
    return holder().sink;
}

QString formatArgument(std::string_view placeholder, const QVariant &argument)
{
    if (placeholder == "%{bool}d") {
        return argument.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    }
    if (placeholder == "%lu") {
        return QString::number(argument.toULongLong());
    }
    return argument.toString();
}

} // namespace

QString formatLogLine(const char *format, std::initializer_list<QVariant> arguments)
{
    static constexpr std::string_view placeholders[] = {"%{bool}d", "%lu", "%s", "%@"};
    QString line;
    std::string_view rest(format);
    const auto *argument = arguments.begin();
    while (!rest.empty()) {
        std::string_view found;
        for (const auto placeholder : placeholders) {
            if (rest.substr(0, placeholder.size()) == placeholder) {
                found = placeholder;
            }
        }
        if (found.empty() || argument == arguments.end()) {
            const auto plain = rest.substr(0, rest.find('%', 1));
            line += QString::fromUtf8(plain.data(), static_cast<qsizetype>(plain.size()));
            rest.remove_prefix(plain.size());
            continue;
        }
        line += formatArgument(found, *argument++);
        rest.remove_prefix(found.size());
    }
    return line;
}

void Logger::debug(const char *format, std::initializer_list<QVariant> arguments) const
{
    write(LogLevel::Debug, format, arguments);
}

void Logger::info(const char *format, std::initializer_list<QVariant> arguments) const
{
    write(LogLevel::Info, format, arguments);
}

void Logger::error(const char *format, std::initializer_list<QVariant> arguments) const
{
    write(LogLevel::Error, format, arguments);
}

void Logger::write(LogLevel level, const char *format, std::initializer_list<QVariant> arguments) const
{
    const auto sink = currentSink();
    if (sink->isEnabled(level, m_category)) {
        sink->write(level, m_category, format, arguments);
    }
}

const Logger &generalLog()
{
    static constexpr Logger logger("general");
    return logger;
}

const Logger &hotkeyLog()
{
    static constexpr Logger logger("hotkey");
    return logger;
}

std::shared_ptr<LogSink> setLogSink(std::shared_ptr<LogSink> sink)
{
    if (!sink) {
        sink = std::make_shared<QtLogSink>();
    }
    const std::lock_guard lock(holder().mutex);
    return std::exchange(holder().sink, std::move(sink));
}

} // namespace talmo
