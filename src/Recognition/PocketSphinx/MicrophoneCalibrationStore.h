#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <mutex>

namespace talmo {

/// The calibration of each microphone, kept from one run to the next. Any thread that may block on the disk.
class MicrophoneCalibrationStore {
public:
    using Mean = QList<float>;

    /// Reads the file if it exists; an unreadable one counts as empty, since everything in it can be calibrated again.
    /// With an empty path, everything stays in memory.
    explicit MicrophoneCalibrationStore(const QString &path = {});

    /// The path of this user's file.
    static QString standardPath();

    /// Empty if the microphone is unknown.
    Mean recall(const QString &microphone) const;
    /// Writes the file if the calibration is new or audibly different.
    void remember(const QString &microphone, const Mean &mean);

private:
    void write();

    const QString m_path;
    mutable std::mutex m_mutex;
    QHash<QString, Mean> m_means;
    QHash<QString, Mean> m_written;
};

} // namespace talmo
