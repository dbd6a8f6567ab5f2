#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <mutex>

namespace talmo {

/// What a recogniser has learnt about the sound of each microphone, kept from one run to the next. Any thread, but none
/// that must not wait for the disk.
class MicrophoneMemory {
public:
    using Mean = QList<float>;

    /// Reads the file if it is there; an unreadable one is as good as none, since everything in it can be learnt again.
    /// An empty path keeps it all in memory.
    explicit MicrophoneMemory(const QString &path = {});

    /// Where it belongs for this user.
    static QString standardPath();

    /// Empty when the microphone is unknown.
    Mean recall(const QString &microphone) const;
    /// Written down when it is new or has changed audibly.
    void remember(const QString &microphone, const Mean &mean);

private:
    void write();

    const QString m_path;
    mutable std::mutex m_mutex;
    QHash<QString, Mean> m_means;
    QHash<QString, Mean> m_written;
};

} // namespace talmo
