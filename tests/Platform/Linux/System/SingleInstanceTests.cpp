#include "Platform/Linux/System/SingleInstance.h"

#include "Support/Printing.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

TEST(SingleInstance, onlyOneInstanceIsFirstUntilItEnds)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"talmo.lock"_s);
    {
        const SingleInstance first(path);
        EXPECT_TRUE(first.isFirst());
        EXPECT_FALSE(SingleInstance(path).isFirst());
        EXPECT_FALSE(SingleInstance(path).isFirst());
    }
    EXPECT_TRUE(SingleInstance(path).isFirst());
}

TEST(SingleInstance, isFirstIfLockCannotBeCreated)
{
    EXPECT_TRUE(SingleInstance(u"/nonexistent/folder/talmo.lock"_s).isFirst());
}

} // namespace talmo::test
