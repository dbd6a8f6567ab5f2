#pragma once

#include "Platform/Linux/System/FileDescriptor.h"

#include <QByteArray>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>

namespace talmo {

/// Writes a value into a pipe as fast as its reader takes it. Gives up on a reader that takes nothing for five seconds.
class PipeWriter {
public:
    /// `onEnd` is called once, with whether the reader has everything; it may destroy this object.
    PipeWriter(FileDescriptor pipe, QByteArray data, std::function<void(bool isComplete)> onEnd);
    PipeWriter(const PipeWriter &) = delete;
    PipeWriter &operator=(const PipeWriter &) = delete;

    void start();

private:
    void write();
    void end(bool isComplete);

    FileDescriptor m_pipe;
    QByteArray m_data;
    qsizetype m_position = 0;
    std::function<void(bool)> m_onEnd;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_patience;
};

} // namespace talmo
