#pragma once

#include "Base/Log.h"

#include <QString>

#include <memory>
#include <mutex>
#include <vector>

namespace talmo::test {

/// Captures the log while it lives. Lines read "category level: text".
class RecordingLog {
public:
    RecordingLog();
    ~RecordingLog();
    RecordingLog(const RecordingLog &) = delete;
    RecordingLog &operator=(const RecordingLog &) = delete;

    std::vector<QString> lines() const;
    /// The format strings, before placeholders are filled in.
    std::vector<QString> formats() const;

private:
    class Sink;
    std::shared_ptr<Sink> m_sink;
    std::shared_ptr<LogSink> m_previous;
};

} // namespace talmo::test
