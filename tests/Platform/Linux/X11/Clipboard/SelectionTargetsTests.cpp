#include "Platform/Linux/X11/Clipboard/SelectionTargets.h"

#include <gmock/gmock.h>

#include <array>
#include <numeric>

namespace talmo::test {

namespace {

QByteArray property(const std::vector<xcb_atom_t> &atoms)
{
    return {reinterpret_cast<const char *>(atoms.data()), static_cast<qsizetype>(atoms.size() * sizeof(xcb_atom_t))};
}

constexpr std::array<xcb_atom_t, 2> excluded = {50, 51};
constexpr xcb_atom_t multiple = 50;

} // namespace

TEST(SelectionTargets, keepOrderAndOmitDuplicatesNoneAndExcluded)
{
    const auto targets = SelectionTargets::parse(property({9, 50, 7, 0, 9, 51, 8}), 32, excluded);
    EXPECT_THAT(targets.atoms, testing::ElementsAre(9, 7, 8));
    EXPECT_FALSE(targets.isTruncated);
}

TEST(SelectionTargets, rejectOtherUnits)
{
    EXPECT_THAT(SelectionTargets::parse(property({9, 7}), 8, excluded).atoms, testing::IsEmpty());
    EXPECT_THAT(SelectionTargets::parse(property({9, 7}), 16, excluded).atoms, testing::IsEmpty());
}

TEST(SelectionTargets, ignoreIncompleteLastAtom)
{
    EXPECT_THAT(SelectionTargets::parse(property({9, 7}).chopped(1), 32, excluded).atoms, testing::ElementsAre(9));
}

TEST(SelectionTargets, truncateListAtLimit)
{
    std::vector<xcb_atom_t> atoms(600'000);
    std::iota(atoms.begin(), atoms.end(), 100);
    const auto targets = SelectionTargets::parse(property(atoms), 32, excluded);
    EXPECT_EQ(targets.atoms.size(), SelectionTargets::maximumCount);
    EXPECT_EQ(targets.atoms.back(), 99 + SelectionTargets::maximumCount);
    EXPECT_TRUE(targets.isTruncated);
}

TEST(SelectionTargets, duplicatesAfterFullListDoNotTruncateIt)
{
    EXPECT_FALSE(SelectionTargets::parse(property({9, 7, 7, 9, 50}), 32, excluded, 2).isTruncated);
    EXPECT_TRUE(SelectionTargets::parse(property({9, 7, 7, 9, 8}), 32, excluded, 2).isTruncated);
}

TEST(ServeMultiple, marksUnservedTargets)
{
    std::vector<std::pair<xcb_atom_t, xcb_atom_t>> asked;
    const auto answer = serveMultiple({1, 11, 2, 12, 3, 13}, multiple, [&asked](auto target, auto place) {
        asked.emplace_back(target, place);
        return target != 2;
    });
    EXPECT_THAT(answer, testing::ElementsAre(1, 11, 2, 0, 3, 13));
    EXPECT_THAT(asked, testing::ElementsAre(std::pair(1, 11), std::pair(2, 12), std::pair(3, 13)));
}

TEST(ServeMultiple, rejectsNestedMultipleAndNoneProperty)
{
    const auto never = [](auto, auto) {
        ADD_FAILURE();
        return true;
    };
    EXPECT_THAT(serveMultiple({multiple, 11, 1, 0}, multiple, never), testing::ElementsAre(multiple, 0, 1, 0));
}

TEST(ServeMultiple, ignoresTargetWithoutProperty)
{
    const auto always = [](auto, auto) { return true; };
    EXPECT_THAT(serveMultiple({1, 11, 2}, multiple, always), testing::ElementsAre(1, 11, 2));
    EXPECT_THAT(serveMultiple({}, multiple, always), testing::IsEmpty());
}

} // namespace talmo::test
