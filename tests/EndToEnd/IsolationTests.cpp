// What other processes can reach of Talmo: nothing.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace talmo::test {

namespace {

class IsolationEndToEndTest : public TalmoFixture {
protected:
    /// The process's descriptors that its children would inherit.
    static QStringList inheritable(const QString &process)
    {
        QStringList found;
        const QDir folder(u"/proc/%1/fdinfo"_s.arg(process));
        for (const auto &name : folder.entryList(QDir::Files)) {
            QFile file(folder.filePath(name));
            if (!file.open(QFile::ReadOnly)) {
                continue; // Closed meanwhile.
            }
            const QString text = QString::fromLatin1(file.readAll());
            const auto flags = text.section(u"flags:\t"_s, 1).section(u'\n', 0, 0).toUInt(nullptr, 8);
            if (name.toInt() > 2 && (flags & O_CLOEXEC) == 0) {
                const QString target = QFile::symLinkTarget(u"/proc/%1/fd/%2"_s.arg(process, name));
                found.append(name + u' ' + target.section(u'/', -1)); // A pipe has no folder of its own.
            }
        }
        return found;
    }
    static unsigned modeOf(const QString &path)
    {
        struct stat status{};
        EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
        return status.st_mode & 0777U;
    }
};

} // namespace

TEST_F(IsolationEndToEndTest, childProcessesInheritNoDescriptors)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    // Talmo inherits the test's own descriptors.
    const QStringList given = inheritable(u"self"_s);
    for (const auto &descriptor : inheritable(QString::number(talmo->processId()))) {
        EXPECT_TRUE(given.contains(descriptor)) << descriptor.toStdString();
    }
}

TEST_F(IsolationEndToEndTest, socketAndLockArePrivate)
{
    startTalmo();
    const QString socket = environment.value(u"XDG_RUNTIME_DIR"_s) + u"/talmo"_s + environment.value(u"DISPLAY"_s);
    EXPECT_EQ(modeOf(socket) & 0077U, 0U);
    EXPECT_EQ(modeOf(socket + u".lock"_s), 0600U);
}

} // namespace talmo::test
