#include "Samples.h"
#include "cli/CommandRunner.h"
#include "support/Hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::cli {
namespace {

using test::hex;
using testing::HasSubstr;
using testing::StartsWith;

// 5 x 3 chequers, black and white.
platform::Bytes chequers() {
    return hex("424D 4A000000 00000000 3E000000 28000000 05000000 03000000 0100 0100 00000000 0C000000 130B0000 "
               "130B0000 02000000 00000000 FFFFFF00 00000000 F8000000 50000000 A8000000");
}

class PictureVerbs : public testing::Test {
protected:
    PictureVerbs() { m_test.put("MS2_Inventory.pdb", samples::inventory()); }
    CommandResult run(const std::vector<std::string>& arguments) { return m_test.run(arguments); }

    CommandTest m_test;
};

TEST_F(PictureVerbs, pictureGoesInAndComesOut) {
    m_test.put("chequers.bmp", chequers());
    EXPECT_EQ(
        run({"image", "MS2_Inventory.pdb", "3", "Picture", "--set", "chequers.bmp", "--out", "MS2_New.pdb"}).code, 0);
    EXPECT_EQ(run({"image", "MS2_New.pdb", "3", "picture", "--out", "out.bmp"}).code, 0);
    EXPECT_EQ(test::toHex(m_test.bytes("out.bmp")), test::toHex(chequers()));
    EXPECT_EQ(run({"image", "MS2_New.pdb", "3", "Picture", "--out", "out.png"}).code, 0);
    EXPECT_EQ(run({"image", "MS2_New.pdb", "4", "Picture", "--set", "out.png"}).code, 0); // into the file itself
    EXPECT_EQ(run({"image", "MS2_New.pdb", "4", "Picture", "--out", "again.bmp"}).code, 0);
    EXPECT_EQ(test::toHex(m_test.bytes("again.bmp")), test::toHex(chequers()));
    EXPECT_EQ(run({"check", "MS2_New.pdb"}).code, 0);
    EXPECT_TRUE(m_test.temporaryFolderIsEmpty());
}

TEST_F(PictureVerbs, refusals) {
    m_test.put("text.bmp", std::string("no picture"));
    const auto record = run({"image", "MS2_Inventory.pdb", "9999", "Picture", "--out", "x.bmp"});
    EXPECT_EQ(record.code, 3);
    EXPECT_THAT(record.err, HasSubstr("There is no record 9999"));
    const auto field = run({"image", "MS2_Inventory.pdb", "1", "Item", "--out", "x.bmp"});
    EXPECT_EQ(field.code, 3);
    EXPECT_THAT(field.err, HasSubstr("holds no pictures"));
    const auto bad = run({"image", "MS2_Inventory.pdb", "1", "Picture", "--set", "text.bmp", "--out", "MS2_N.pdb"});
    EXPECT_EQ(bad.code, 3);
    EXPECT_EQ(bad.err, "Image conversion failed with following error: Bad bitmap file\n");
    EXPECT_EQ(run({"image", "MS2_Inventory.pdb", "1", "Picture"}).code, 2);
    const auto none = run({"image", "MS2_Inventory.pdb", "3", "Picture", "--out", "x.bmp"});
    EXPECT_EQ(none.code, 3);
    EXPECT_THAT(none.err, HasSubstr("no picture"));
}

TEST_F(PictureVerbs, allPicturesAreNamedForTheirRecords) {
    std::filesystem::create_directory(m_test.path("out"));
    const auto result = run({"images", "MS2_Inventory.pdb", "out", "--bmp"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("00001 Picture Claw_hammer_16_oz.bmp\n"));
    EXPECT_EQ(m_test.bytes("out/00001 Picture Claw_hammer_16_oz.bmp").at(0), 'B');
}

TEST_F(PictureVerbs, damagedPictureIsFoundWithItsPlace) {
    platform::Bytes file = samples::inventory();
    const platform::Bytes head = hex("12"); // the first cell of type 18 with a header of version 2 behind it
    bool damaged = false;
    for (std::size_t at = 1000; at + 20 < file.size() && !damaged; ++at)
        if (file[at] == head[0] && file[at + 4] == 0 && file[at + 14] == 2 && file[at + 5] == 0) {
            file[at + 14] = 9;
            damaged = true;
        }
    ASSERT_TRUE(damaged);
    m_test.put("MS2_Bad.pdb", file);
    const auto checked = run({"check", "MS2_Bad.pdb"});
    EXPECT_EQ(checked.code, 1);
    EXPECT_THAT(checked.out + checked.err, HasSubstr("the picture cannot be read: Invalid data"));
    std::filesystem::create_directory(m_test.path("out"));
    const auto images = run({"images", "MS2_Bad.pdb", "out"});
    EXPECT_EQ(images.code, 3);
    EXPECT_THAT(images.err, HasSubstr("Image conversion failed with following error: Invalid data"));
}

TEST_F(PictureVerbs, screensAreToldAsTextAndJson) {
    m_test.put("MS2_Members.pdb", samples::members());
    const auto text = run({"form", "MS2_Members.pdb"});
    EXPECT_EQ(text.code, 0);
    EXPECT_THAT(text.out, StartsWith("Base part, values from pixel 60\n   1  Last name  |  Last name\n"));
    const auto json = run({"form", "MS2_Members.pdb", "--json"});
    EXPECT_EQ(json.code, 0);
    EXPECT_THAT(json.out, HasSubstr("\"splitter\": 60"));
    EXPECT_THAT(json.out, HasSubstr("\"field\": \"Last name\""));
}

} // namespace
} // namespace tallybook::cli
