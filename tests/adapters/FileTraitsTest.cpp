#include "adapters/FileTraits.h"

#include <gtest/gtest.h>
#include <linux/posix_acl.h>
#include <sys/stat.h>

namespace tallybook::adapters {
namespace {

constexpr uid_t kAnn = 1001;
constexpr uid_t kBob = 1002;
constexpr uid_t kCarl = 1003;
constexpr gid_t kTeam = 2000;
constexpr gid_t kBobs = 2002;
constexpr gid_t kGuests = 2003;
constexpr std::uint32_t kNobody = ACL_UNDEFINED_ID;

AccessEntry owner(std::uint16_t rights) {
    return {ACL_USER_OBJ, rights, kNobody};
}
AccessEntry user(uid_t id, std::uint16_t rights) {
    return {ACL_USER, rights, id};
}
AccessEntry ownGroup(std::uint16_t rights) {
    return {ACL_GROUP_OBJ, rights, kNobody};
}
AccessEntry group(gid_t id, std::uint16_t rights) {
    return {ACL_GROUP, rights, id};
}
AccessEntry mask(std::uint16_t rights) {
    return {ACL_MASK, rights, kNobody};
}
AccessEntry others(std::uint16_t rights) {
    return {ACL_OTHER, rights, kNobody};
}

struct Case {
    const char* name;
    Access before;
    uid_t owner;
    gid_t group;
    Access expected;
    mode_t withoutList; // the mode where the disk has no lists
};

class FileTraitsTest : public testing::TestWithParam<Case> {};

TEST_P(FileTraitsTest, carriesRightsOver) {
    const Case& c = GetParam();
    EXPECT_EQ(withOwner(c.before, c.owner, c.group), c.expected);
    EXPECT_EQ(withoutList(c.before, c.owner, c.group).mode, c.withoutList);
    EXPECT_TRUE(withoutList(c.before, c.owner, c.group).list.empty());
}

const std::vector<AccessEntry> kShared = {owner(6), user(kBob, 6), ownGroup(4), mask(6), others(0)};

INSTANTIATE_TEST_SUITE_P(
    Rights, FileTraitsTest,
    testing::Values(
        Case{"theSameOwner", {kAnn, kTeam, 0640, {}}, kAnn, kTeam, {kAnn, kTeam, 0640, {}}, 0640},
        Case{"theSameOwnerWithAList", {kAnn, kTeam, 0660, kShared}, kAnn, kTeam, {kAnn, kTeam, 0660, kShared}, 0600},
        Case{"aColleague",
             {kAnn, kTeam, 0660, {}},
             kBob,
             kTeam,
             {kBob, kTeam, 0660, {owner(6), user(kAnn, 6), ownGroup(6), mask(6), others(0)}},
             0660},
        // Who was in the team is one of the others where there is no list.
        Case{"anotherGroup",
             {kAnn, kTeam, 0664, {}},
             kAnn,
             kBobs,
             {kAnn, kBobs, 0664, {owner(6), ownGroup(4), group(kTeam, 6), mask(6), others(4)}},
             0644},
        Case{"aGroupThatMayDoLessThanOthers",
             {kAnn, kTeam, 0606, {}},
             kBob,
             kBobs,
             {kBob, kBobs, 0666, {owner(6), user(kAnn, 6), ownGroup(0), group(kTeam, 0), mask(6), others(6)}},
             0600},
        // An empty mask would leave everybody to the rights of others.
        Case{"whomNothingIsLeft",
             {kAnn, kTeam, 0002, {}},
             kBob,
             kTeam,
             {kBob, kTeam, 0622, {owner(6), user(kAnn, 0), ownGroup(0), mask(2), others(2)}},
             0602},
        // What the owner took from himself the new one has: he has just written the file.
        Case{"anOwnerWhoMayNotWrite",
             {kAnn, kTeam, 0460, {}},
             kBob,
             kTeam,
             {kBob, kTeam, 0660, {owner(6), user(kAnn, 4), ownGroup(6), mask(6), others(0)}},
             0660},
        Case{"aUserOfTheListBecomesTheOwner",
             {kAnn, kTeam, 0660, kShared},
             kBob,
             kBobs,
             {kBob, kBobs, 0660, {owner(6), user(kAnn, 6), ownGroup(0), group(kTeam, 4), mask(6), others(0)}},
             0600},
        Case{"theMaskStillCuts",
             {kAnn, kTeam, 0640, {owner(6), user(kCarl, 6), ownGroup(6), group(kGuests, 2), mask(4), others(0)}},
             kBob,
             kTeam,
             {kBob,
              kTeam,
              0660,
              {owner(6), user(kAnn, 6), user(kCarl, 4), ownGroup(4), group(kGuests, 0), mask(6), others(0)}},
             0600},
        Case{"aGroupOfTheListThatWasTheFilesOwn",
             {kAnn, kTeam, 0664, {owner(6), ownGroup(4), group(kTeam, 2), group(kGuests, 4), mask(6), others(4)}},
             kAnn,
             kBobs,
             {kAnn, kBobs, 0664, {owner(6), ownGroup(0), group(kTeam, 6), group(kGuests, 4), mask(6), others(4)}},
             0600}),
    [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace tallybook::adapters
