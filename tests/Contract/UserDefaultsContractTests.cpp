#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace talmo::test {

namespace {

struct MemorySubject {
    std::shared_ptr<UserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    void startAgain() {} // Stored values are visible immediately, so there is nothing to reload.
};

struct JsonSubject {
    QTemporaryDir folder;
    std::shared_ptr<UserDefaults> defaults = open();

    std::shared_ptr<JsonUserDefaults> open() const
    {
        return std::make_shared<JsonUserDefaults>(folder.filePath(u"talmo/settings.json"_s),
                                                  SerialExecutor::onNewThread(u"settings"_s));
    }
    void startAgain()
    {
        EXPECT_TRUE(waitFor(std::static_pointer_cast<JsonUserDefaults>(defaults)->written()));
        defaults = open();
    }
};

template <typename Subject>
class UserDefaultsContract : public testing::Test {
protected:
    UserDefaults &defaults() { return *subject.defaults; }
    Subject subject;
};

using Subjects = testing::Types<MemorySubject, JsonSubject>;
TYPED_TEST_SUITE(UserDefaultsContract, Subjects);

} // namespace

TYPED_TEST(UserDefaultsContract, missingValuesAreNullopt)
{
    EXPECT_FALSE(this->defaults().boolean(u"talmo.a"_s));
    EXPECT_FALSE(this->defaults().string(u"talmo.a"_s));
    EXPECT_FALSE(this->defaults().stringArray(u"talmo.a"_s));
}

TYPED_TEST(UserDefaultsContract, persistsValuesAcrossRuns)
{
    const QStringList words{u"Caf\u00E9"_s, u"Cafe\u0301"_s, u"a\"b\\c\n"_s, QString()};
    this->defaults().set(u"talmo.flag"_s, true);
    this->defaults().set(u"talmo.text"_s, u"polite"_s);
    this->defaults().set(u"talmo.words"_s, words);
    this->defaults().set(u"talmo.none"_s, QStringList());
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(this->defaults().boolean(u"talmo.flag"_s), true);
        EXPECT_EQ(this->defaults().string(u"talmo.text"_s), u"polite"_s);
        EXPECT_EQ(this->defaults().stringArray(u"talmo.words"_s), words);
        EXPECT_EQ(this->defaults().stringArray(u"talmo.none"_s), QStringList());
        this->subject.startAgain();
    }
}

TYPED_TEST(UserDefaultsContract, valueOfWrongTypeCountsAsMissing)
{
    this->defaults().set(u"talmo.text"_s, u"true"_s);
    this->defaults().set(u"talmo.flag"_s, true);
    EXPECT_FALSE(this->defaults().boolean(u"talmo.text"_s));
    EXPECT_FALSE(this->defaults().stringArray(u"talmo.text"_s));
    EXPECT_FALSE(this->defaults().string(u"talmo.flag"_s));
}

TYPED_TEST(UserDefaultsContract, storedValuesOverrideRegisteredDefaultsWhichAreNotStored)
{
    this->defaults().registerDefault(u"talmo.name"_s, u"Right Ctrl"_s);
    EXPECT_EQ(this->defaults().string(u"talmo.name"_s), u"Right Ctrl"_s);
    this->defaults().set(u"talmo.name"_s, u"F13"_s);
    EXPECT_EQ(this->defaults().string(u"talmo.name"_s), u"F13"_s);
    this->defaults().set(u"talmo.name"_s, false);
    EXPECT_EQ(this->defaults().string(u"talmo.name"_s), u"Right Ctrl"_s) << "a value of another type does not hide it";
}

TYPED_TEST(UserDefaultsContract, lastValueWins)
{
    for (const bool value : {true, false, false, true}) {
        this->defaults().set(u"talmo.flag"_s, value);
    }
    this->subject.startAgain();
    EXPECT_EQ(this->defaults().boolean(u"talmo.flag"_s), true);
}

} // namespace talmo::test
