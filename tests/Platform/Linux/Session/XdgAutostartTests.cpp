#include "Platform/Linux/Session/XdgAutostart.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#undef signals
#include <gio/gdesktopappinfo.h>

namespace talmo::test {

namespace {

class XdgAutostartTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString userFolder = folder.filePath(u"user/autostart"_s);
    QString systemFolder = folder.filePath(u"system/autostart"_s);
    QString program = makeProgram(u"talmo"_s);
    XdgAutostart item{program, userFolder, {systemFolder}};

    QString makeProgram(const QString &name) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QFile::WriteOnly)) << name.toStdString();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file.fileName();
    }
    static QString entryIn(const QString &where) { return where + u"/io.github.talmo.Talmo.desktop"_s; }
    QString userEntry() const { return entryIn(userFolder); }
    QByteArray content() const
    {
        QFile file(userEntry());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    void putSystemEntry() const { XdgAutostart(program, systemFolder, {}).registerItem(); }
    void replaceInEntry(const QByteArray &before, const QByteArray &after) const
    {
        auto text = content();
        ASSERT_TRUE(text.contains(before));
        text.replace(before, after);
        QFile file(userEntry());
        ASSERT_TRUE(file.open(QFile::WriteOnly | QFile::Truncate));
        file.write(text);
    }
    /// The output of desktop-file-validate; empty if the entry is valid.
    static QByteArray complaints(const QString &entry)
    {
        QProcess validator;
        validator.setProcessChannelMode(QProcess::MergedChannels);
        validator.start(u"desktop-file-validate"_s, {entry});
        if (!validator.waitForFinished()) {
            return "desktop-file-validate cannot be run";
        }
        return validator.readAll() + (validator.exitCode() == 0 ? "" : "refused");
    }
};

} // namespace

TEST_F(XdgAutostartTest, registersAndUnregisters)
{
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    item.registerItem();
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_EQ(complaints(userEntry()), "");
    item.unregisterItem();
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    EXPECT_FALSE(QFileInfo::exists(userEntry()));
}

TEST_F(XdgAutostartTest, registeringTwiceChangesNothing)
{
    item.registerItem();
    const auto once = content();
    item.registerItem();
    EXPECT_EQ(content(), once);
    item.unregisterItem();
    item.unregisterItem();
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
}

TEST_F(XdgAutostartTest, quotesSpacesAndSpecialCharactersInPaths)
{
    for (const auto &name :
         {u"my talmo"_s, u"a\"b"_s, u"back\\slash"_s, u"do$HOME"_s, u"tick`s"_s, u"m\u00FCde"_s, u"semi;colon"_s}) {
        const QString oddProgram = makeProgram(name);
        XdgAutostart odd(oddProgram, userFolder, {});
        odd.registerItem();
        EXPECT_EQ(odd.status(), LoginItemStatus::Enabled) << name.toStdString();
        EXPECT_EQ(complaints(userEntry()), "") << content().toStdString();
        auto *info = g_desktop_app_info_new_from_filename(QFile::encodeName(userEntry()).constData());
        ASSERT_NE(info, nullptr) << name.toStdString() << '\n' << content().toStdString();
        g_object_unref(info);
    }
}

TEST_F(XdgAutostartTest, escapesPercentSigns)
{
    const QString oddProgram = makeProgram(u"50%f talmo"_s);
    XdgAutostart odd(oddProgram, userFolder, {});
    odd.registerItem();
    EXPECT_EQ(odd.status(), LoginItemStatus::Enabled);
    EXPECT_TRUE(content().contains("/50%%f talmo\"")) << content().toStdString();
    EXPECT_EQ(complaints(userEntry()), "");
}

TEST_F(XdgAutostartTest, readsStatusFromExistingEntry)
{
    item.registerItem();
    QFile::remove(userEntry());
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << "removed manually";
    item.registerItem();
    replaceInEntry("X-GNOME-Autostart-enabled=true", "X-GNOME-Autostart-enabled=false");
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << "disabled in the desktop's settings";
    item.registerItem();
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    QFile::remove(program);
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered) << "it would start nothing";
}

TEST_F(XdgAutostartTest, keepsUsersAdditions)
{
    item.registerItem();
    replaceInEntry("Terminal=false", "Terminal=false\nX-GNOME-Autostart-Delay=5");
    item.registerItem();
    EXPECT_TRUE(content().contains("X-GNOME-Autostart-Delay=5"));
}

TEST_F(XdgAutostartTest, systemEntryCountsAndIsOverridden)
{
    putSystemEntry();
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    item.unregisterItem();
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    EXPECT_TRUE(QFileInfo::exists(entryIn(systemFolder)));
    EXPECT_EQ(complaints(userEntry()), "");
    item.registerItem();
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
}

TEST_F(XdgAutostartTest, replacesDamagedEntries)
{
    QDir().mkpath(userFolder);
    QFile file(userEntry());
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("\xff not an entry");
    file.close();
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    item.registerItem();
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_EQ(complaints(userEntry()), "");
}

TEST_F(XdgAutostartTest, uncreatableFolderIsAnError)
{
    XdgAutostart nowhere(program, program + u"/autostart"_s, {});
    EXPECT_THROW(nowhere.registerItem(), Error);
}

} // namespace talmo::test
