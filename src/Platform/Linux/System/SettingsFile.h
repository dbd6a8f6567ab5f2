#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace talmo {

/// The settings as a private JSON file. Any thread, one at a time; every call may block on the disk.
///
/// A file with invalid content is renamed and never overwritten; one that cannot be read is left alone. Both are
/// logged.
class SettingsFile {
public:
    /// `inPlaceOfDamaged`: the values to use if the file is unusable, and to save if it was set aside. The defaults
    /// would undo the user's choices, and some of those must not be undone.
    explicit SettingsFile(QString path, QJsonObject inPlaceOfDamaged = {});

    /// Empty if there is no file.
    QJsonObject read();

    /// Saves these values and keeps the others in the file, which another process may have written. If the file is
    /// gone, saves `all`. A failure is logged, and the unsaved values are saved with the next call. The file always
    /// holds either the old or the new content.
    void write(const QJsonObject &changes, const QJsonObject &all);

    /// False from a failed write until a successful one.
    bool isAllWritten() const { return m_unwritten.isEmpty(); }

private:
    std::optional<QJsonObject> load() const;
    void replaceDamaged();
    QString setAside();
    QJsonObject contentToChange(const QJsonObject &all);
    void save(const QJsonObject &content) const;

    QString m_path;
    QJsonObject m_inPlaceOfDamaged;
    QJsonObject m_unwritten;
};

} // namespace talmo
