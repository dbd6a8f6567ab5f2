#include "Main/WordPronunciationsModel.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Files/PrivateFile.h"
#include "Recognition/Text/Pronunciation.h"
#include "Settings/DictionaryText.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace talmo {

namespace {

/// Reads the file again first: the user may have edited it in the meantime.
void write(const QString &path, const DictionaryEntry &entry)
{
    QFile file(path);
    const QString before = file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const QString after = withPronunciation(before, entry);
    if (after == before) {
        return;
    }
    try {
        PrivateFile::makeFolder(QFileInfo(path).path());
        PrivateFile::write(path, after.toUtf8());
    } catch (const Error &error) {
        generalLog().error("the pronunciations could not be saved: %@", {error.localizedDescription()});
    }
}

} // namespace

WordPronunciationsModel::WordPronunciationsModel(QString path, std::shared_ptr<SerialExecutor> writer,
                                                 std::shared_ptr<SerialExecutor> mainExecutor,
                                                 std::function<void()> onWritten)
    : m_path(std::move(path)),
      m_writer(std::move(writer)),
      m_mainExecutor(std::move(mainExecutor)),
      m_onWritten(std::move(onWritten))
{
}

void WordPronunciationsModel::refresh()
{
    auto sounds = Pronunciation::readSoundsLike(m_path);
    if (sounds != m_sounds) {
        publish(m_sounds, std::move(sounds));
    }
}

QString WordPronunciationsModel::of(const QString &word) const
{
    return m_sounds.value(word.toLower());
}

void WordPronunciationsModel::set(const QString &word, const QString &soundsLike)
{
    const QString sound = soundsLike.trimmed();
    if (word.isEmpty() || of(word) == sound) {
        return;
    }
    auto sounds = m_sounds;
    if (sound.isEmpty()) {
        sounds.remove(word.toLower());
    } else {
        sounds.insert(word.toLower(), sound);
    }
    publish(m_sounds, std::move(sounds));
    m_writer->post(
        [path = m_path, entry = DictionaryEntry{word, sound}, executor = m_mainExecutor, onWritten = m_onWritten] {
            write(path, entry);
            executor->post(onWritten);
        });
}

} // namespace talmo
