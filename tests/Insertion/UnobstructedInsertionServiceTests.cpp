#include "Insertion/UnobstructedInsertionService.h"

#include "Base/Completion.h"
#include "Base/Error.h"
#include "Base/Task.h"
#include "Support/FakeInsertionService.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

TEST(UnobstructedInsertionService, insertsOnceOwnWindowsAreClosed)
{
    const auto inner = std::make_shared<FakeInsertionService>();
    const auto cleared = Completion<void>::make();
    UnobstructedInsertionService service(inner, [cleared] { return cleared->future(); });
    const auto task = logEscapes(service.insert(u"hello"_s));
    settle();
    EXPECT_TRUE(inner->inserted.empty());
    cleared->finish();
    settle();
    EXPECT_THAT(inner->inserted, testing::ElementsAre(u"hello"_s));
}

} // namespace talmo::test
