#include "core/platform/Paths.h"

#include "adapters/PosixFiles.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace tallybook::platform {
namespace {

TEST(ShownPath, isWindows1252) {
    EXPECT_EQ(shownPath("/home/caf\xC3\xA9/MS2_\xE2\x82\xAC.pdb"), "/home/caf\xE9/MS2_\x80.pdb");
    EXPECT_EQ(shownPath("/\xE2\x98\x83"), "/?"); // a snowman has no place in the code page
}

TEST(FoldedName, foldsTheLettersOfTheCodePage) {
    struct Case {
        std::string name;
        std::string folded;
    };
    const Case cases[] = {
        {"", ""},
        {"ms2_Books.pdb", "MS2_BOOKS.PDB"},
        {"[`{@~", "[`{@~"},                       // beside the letters in ASCII
        {"caf\xC3\xA9", "CAF\xC3\x89"},           // e acute
        {"\xC3\xA0\xC3\xBE", "\xC3\x80\xC3\x9E"}, // first and last of the row
        {"\xC3\xB7\xC3\x97", "\xC3\xB7\xC3\x97"}, // division and multiplication sign
        {"\xC3\x9F", "\xC3\x9F"},                 // sharp s has no capital
        {"\xC3\xBF\xC5\xA1\xC5\x93\xC5\xBE", "\xC5\xB8\xC5\xA0\xC5\x92\xC5\xBD"},
        {"\xD0\xB0\xE2\x82\xAC", "\xD0\xB0\xE2\x82\xAC"}, // not of the code page, or no letter
        {"\xC3", "\xC3"},                                 // cut in the middle of a letter
        {"\xFF\x61", "\xFF\x41"},                         // no UTF-8
    };
    for (const Case& c : cases)
        EXPECT_EQ(foldedName(c.name), c.folded) << c.name;
}

class FindIgnoringCase : public testing::Test {
protected:
    test::TempFolder folder;
    adapters::PosixFiles files;
};

TEST_F(FindIgnoringCase, prefersTheExactName) {
    test::putFile(folder / "Books", "");
    test::putFile(folder / "BOOKS", "");
    EXPECT_EQ(findIgnoringCase(files, folder / "Books"), folder / "Books");
    EXPECT_EQ(findIgnoringCase(files, folder / "BOOKS"), folder / "BOOKS");
}

TEST_F(FindIgnoringCase, takesTheFirstOfSeveralInByteOrder) {
    test::putFile(folder / "books", "");
    test::putFile(folder / "BOOKS", "");
    test::putFile(folder / "Books", "");
    EXPECT_EQ(findIgnoringCase(files, folder / "bOOKS"), folder / "BOOKS");
}

TEST_F(FindIgnoringCase, givesThePathItselfWhenThereIsNone) {
    test::putFile(folder / "Books.pdb", "");
    EXPECT_EQ(findIgnoringCase(files, folder / "Books"), folder / "Books");
    EXPECT_EQ(findIgnoringCase(files, folder / "missing" / "Books"), folder / "missing" / "Books");
}

} // namespace
} // namespace tallybook::platform
