#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace talmo {

/// The settings as a private JSON file. Any thread, one at a time; every call may wait for the disk.
///
/// A file that cannot be understood is set aside under another name and never overwritten; one that cannot be read is
/// left alone. Both are said in the log.
class SettingsFile {
public:
    /// `inPlaceOfDamaged`: what is read where there is a file that cannot be used, and stored where it was set aside.
    /// The defaults would undo what the user has chosen, and some of that must not be undone.
    explicit SettingsFile(QString path, QJsonObject inPlaceOfDamaged = {});

    /// Empty when there is no file.
    QJsonObject read();

    /// Puts these values into the file, and leaves what else stands in it: another process may have written there.
    /// Where the file is gone, `all` is written. A failure is logged, and what could not be written goes along with
    /// the next call. What stands in the file is at all times either the old or the new content.
    void write(const QJsonObject &changes, const QJsonObject &all);

    /// False from a write that failed until one that did not.
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
