#include "core/pdb/Names.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

struct NameCase {
    const char* name;
    const char* given;
    const char* expected;
};

TEST(addUnderscore20, replacesBlanksFromThePrefixOn) {
    const NameCase cases[] = {
        {"file name", "MS2_My Books.pdb", "MS2_My_Books.pdb"},
        {"folders ahead keep theirs", "/home/a b/MS2_My Books.pdb", "/home/a b/MS2_My_Books.pdb"},
        {"older prefix", "/a b/MSA_My Books.pdb", "/a b/MSA_My_Books.pdb"},
        {"older prefix goes first", "/MS2_a b/MSA_c d.pdb", "/MS2_a b/MSA_c_d.pdb"},
        {"first of two", "/MS2_a b/MS2_c d.pdb", "/MS2_a_b/MS2_c_d.pdb"},
        {"no prefix: all of it", "/a b/c d.pdb", "/a_b/c_d.pdb"},
        {"letter case does not count", "/a b/ms2_c d.PDB", "/a b/ms2_c_d.PDB"},
        {"empty", "", ""},
    };
    for (const NameCase& c : cases)
        EXPECT_EQ(addUnderscore20(c.given), c.expected) << c.name;
}

TEST(RemoveUnderscore, putsBlanksBehindThePrefix) {
    const NameCase cases[] = {
        {"file name", "MS2_My_Books.pdb", "MS2_My Books.pdb"},
        {"folders ahead keep theirs", "/a_b/MS2_My_Books.pdb", "/a_b/MS2_My Books.pdb"},
        {"older prefix", "MSA_My_Books", "MSA_My Books"},
        {"newer prefix goes first", "MSA_a_b_MS2_c_d", "MSA_a_b_MS2_c d"},
        {"no prefix: as it stands", "My_Books", "My_Books"},
        {"empty", "", ""},
    };
    for (const NameCase& c : cases)
        EXPECT_EQ(RemoveUnderscore(c.given), c.expected) << c.name;
}

TEST(Prefixes, areFoundAnywhereInAnyCase) {
    EXPECT_TRUE(has2xPrefix("/x/MS2_a.pdb"));
    EXPECT_TRUE(has2xPrefix("ms2_a.PDB"));
    EXPECT_FALSE(has2xPrefix("MS2a.pdb"));
    EXPECT_FALSE(has2xPrefix("MSA_a.pdb"));
    EXPECT_TRUE(has1xPrefix("mSa_a.pdb"));
    EXPECT_FALSE(has1xPrefix("MS2_a.pdb"));
}

TEST(headerName, hasThePrefixAndFits) {
    EXPECT_EQ(headerName("MS2_My Books", "ignored"), "MS2_My Books");
    EXPECT_EQ(headerName("My Books", "ignored"), "MS2_My Books");
    EXPECT_EQ(headerName("", "MS2_My_Books"), "MS2_My_Books");
    EXPECT_EQ(headerName("", "Books"), "MS2_Books");
    EXPECT_EQ(headerName("MS2_012345678901234567890123456", ""), "MS2_012345678901234567890123456"); // 31 bytes
    EXPECT_EQ(headerName("MS2_0123456789012345678901234567", ""), "MS2_012345678901234567890123456");
    EXPECT_EQ(headerName("0123456789012345678901234567", ""), "MS2_012345678901234567890123456");
}

} // namespace
} // namespace tallybook::pdb
