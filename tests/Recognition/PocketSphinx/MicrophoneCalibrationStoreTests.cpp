#include "Recognition/PocketSphinx/MicrophoneCalibrationStore.h"

#include "Support/Printing.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

TEST(MicrophoneCalibrationStore, persistsAcrossRuns)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"state/talmo/microphones.json"_s);
    {
        MicrophoneCalibrationStore memory(path);
        EXPECT_TRUE(memory.recall(u"desk"_s).isEmpty());
        memory.remember(u"desk"_s, {40, -3.5, 1});
        memory.remember(u"lap"_s, {20, 1, 1});
        EXPECT_EQ(memory.recall(u"desk"_s), (MicrophoneCalibrationStore::Mean{40, -3.5, 1}));
    }
    EXPECT_EQ(MicrophoneCalibrationStore(path).recall(u"desk"_s), (MicrophoneCalibrationStore::Mean{40, -3.5, 1}));
}

TEST(MicrophoneCalibrationStore, ignoresUnreadableFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"microphones.json"_s);
    for (const QByteArray content : {"{\"desk\": [1, 2", "[]", "{\"desk\": \"x\"}", "{\"desk\": [1, \"x\"]}",
                                     "{\"desk\": [1e300, 2]}", "{\"desk\": [null]}", ""}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
        file.close();
        EXPECT_TRUE(MicrophoneCalibrationStore(path).recall(u"desk"_s).isEmpty()) << content.constData();
    }
    MicrophoneCalibrationStore nowhere(u"/proc/nowhere/microphones.json"_s);
    nowhere.remember(u"desk"_s, {1});
    EXPECT_EQ(nowhere.recall(u"desk"_s), MicrophoneCalibrationStore::Mean{1});
}

} // namespace talmo::test
