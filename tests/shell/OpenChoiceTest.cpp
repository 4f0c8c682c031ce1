#include "core/shell/OpenChoice.h"

#include <gtest/gtest.h>

namespace tallybook::shell {
namespace {

struct Case {
    const char* name;
    bool valid;
};

constexpr Case kCases[] = {
    {"MS2_Books.pdb", true},
    {"ms2_books.PDB", true},
    {"MSA_Old.pdb", true},
    {"MS2_", true},
    {"Books.pdb", false},
    {"MS2", false},
    {"Copy of MS2_Books.pdb", false},
    {"", false},
};

TEST(OpenChoice, takesNamesWithAPrefixOfOneOfTheFormats) {
    for (const Case& one : kCases)
        EXPECT_EQ(isTallybookName(one.name), one.valid) << one.name;
}

} // namespace
} // namespace tallybook::shell
