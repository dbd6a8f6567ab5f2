#include "Platform/Linux/Keys/KeyboardCapabilities.h"

#include "Support/Printing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

constexpr int rightCtrl = 97;
constexpr int f9 = 67;

class KeyboardCapabilitiesTest : public testing::Test {
protected:
    void addDevice(const QString &name, const QByteArray &keys)
    {
        QDir(folder.path()).mkpath(name + u"/capabilities"_s);
        QFile file(folder.filePath(name + u"/capabilities/key"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(keys);
    }
    std::optional<bool> has(int code) const { return KeyboardCapabilities::anyKeyboardHas(code, folder.path()); }
    QTemporaryDir folder;
};

} // namespace

TEST_F(KeyboardCapabilitiesTest, readsKeysOfAnyKeyboard)
{
    // Bits 1 to 63 and, in the higher word, F9 (67) but not Right Ctrl (97).
    addDevice(u"input3"_s, "8 fffffffffffffffe\n");
    EXPECT_EQ(has(f9), true);
    EXPECT_EQ(has(rightCtrl), false);
    addDevice(u"input4"_s, "200000000 fffffffffffffffe\n");
    EXPECT_EQ(has(rightCtrl), true);
}

TEST_F(KeyboardCapabilitiesTest, powerButtonsAreNoKeyboards)
{
    addDevice(u"input0"_s, "10000000000000 0\n");
    EXPECT_EQ(has(f9), std::nullopt);
}

} // namespace talmo::test
