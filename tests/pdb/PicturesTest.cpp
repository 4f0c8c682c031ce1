#include "core/pdb/Pictures.h"

#include "pdb/OneField.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::FieldType;
using platform::Bytes;
using test::builtCells;
using test::hex;
using test::OneField;
using test::TestServices;
using test::toHex;

const std::filesystem::path kCopy = "/app/Temp/Copy_MS2_A.pdb";

class PictureSave : public ::testing::Test {
protected:
    PictureSave() { m_test.files.addFolder("/app/Temp"); }

    // Opens a file whose record holds these cells; the file is also the temporary copy.
    void open(const std::string& cells) {
        const Bytes file = m_field.file(cells);
        m_test.files.put(kCopy, file);
        ASSERT_TRUE(readDatabase(m_doc, file, "x", {}).ok());
        m_doc.TempCopyPath = kCopy;
    }

    std::string errorOfSave() {
        const auto built = buildDatabase(m_doc, m_test);
        return built.ok() ? "saved" : built.error().tag + ": " + built.error().description();
    }

    OneField m_field{FieldType::Image};
    model::Document m_doc;
    TestServices m_test;
};

TEST_F(PictureSave, unchangedPictureIsCopiedByteForByte) {
    open("12 01 0004 77 AA00BB 99"); // also the two bytes that are 0 as a rule
    const auto built = buildDatabase(m_doc, m_test);
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(builtCells(m_doc, m_test), toHex(hex("12 01 0004 77 AA00BB 99")));
    ASSERT_EQ(built.value().images.size(), 1u);
    EXPECT_EQ(built.value().images[0].record, 0);
    EXPECT_EQ(built.value().images[0].slot, 1);
    const auto position = static_cast<std::size_t>(built.value().images[0].position);
    EXPECT_EQ(toHex(platform::ByteSpan(built.value().bytes).subspan(position - 1, 3)), "12 01 00");
    EXPECT_TRUE(built.value().usedPictures.empty());
}

TEST_F(PictureSave, placesMoveWithWhatStandsAhead) {
    open("12 01 0002 00 AA 00");
    m_doc.CurrDB20.StartupText = "twelve chars";
    const std::int32_t before = m_doc.CellLongs.get(0, 1);
    const auto built = buildDatabase(m_doc, m_test);
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(built.value().images[0].position, before + 12);
    EXPECT_EQ(m_doc.CellLongs.get(0, 1), before); // until the file is safely written
}

TEST_F(PictureSave, survivesTwoSavesWhenTheCopyIsRenewed) {
    open("12 01 0002 00 AA 00");
    for (int i = 0; i < 2; ++i) {
        m_doc.CurrDB20.StartupText += "more";
        const auto built = buildDatabase(m_doc, m_test);
        ASSERT_TRUE(built.ok());
        m_test.files.put(kCopy, built.value().bytes);
        m_doc.CellLongs.set(0, 1, built.value().images[0].position);
    }
    EXPECT_EQ(builtCells(m_doc, m_test), "12 01 00 02 00 AA 00");
}

TEST_F(PictureSave, copyIsReadOnceForManyPictures) {
    open("12 01 0002 00 AA 00");
    for (int i = 0; i < 50; ++i) {
        const int row = model::appendRecord(m_doc);
        m_doc.grd.setText(row, 2, " {Image}");
        m_doc.CellLongs.set(row - 2, 1, m_doc.CellLongs.get(0, 1));
    }
    const int before = m_test.files.calls();
    const auto built = buildDatabase(m_doc, m_test);
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(built.value().images.size(), 51u);
    EXPECT_EQ(m_test.files.calls(), before + 1);
}

TEST_F(PictureSave, missingCopyFailsWithItsPath) {
    open("12 01 0002 00 AA 00");
    ASSERT_TRUE(m_test.files.remove(kCopy).ok());
    const auto built = buildDatabase(m_doc, m_test);
    ASSERT_FALSE(built.ok());
    EXPECT_EQ(built.error().kind, platform::ErrorKind::File);
    EXPECT_NE(built.error().text.find("/app/Temp/Copy_MS2_A.pdb"), std::string::npos);
    EXPECT_EQ(m_doc.grd.text(2, 2), " {Image}");
}

TEST_F(PictureSave, copyWithoutThePictureFailsWithItsPath) {
    open("12 01 0002 00 AA 00");
    const std::int32_t place = m_doc.CellLongs.get(0, 1);
    for (const std::int32_t wrong : {0, -1, 1, place - 1, place + 1, 100000}) {
        m_doc.CellLongs.set(0, 1, wrong);
        EXPECT_EQ(errorOfSave(), "Save_DB : buildRecord20: \"/app/Temp/Copy_MS2_A.pdb\" holds no picture at byte " +
                                     std::to_string(wrong - 1) + ".")
            << wrong;
    }
    m_doc.CellLongs.set(0, 1, place);
    EXPECT_EQ(errorOfSave(), "saved");
    Bytes cut = m_test.files.bytes(kCopy);
    cut.resize(static_cast<std::size_t>(place) + 5); // two of the picture's three bytes
    m_test.files.put(kCopy, cut);
    EXPECT_NE(errorOfSave(), "saved");
}

TEST_F(PictureSave, newPictureComesFromItsFile) {
    open("");
    const std::filesystem::path path = "/app/Temp/rlw_0000000042.rle";
    m_test.files.put(path, hex("AA BB CC"));
    m_doc.grd.setText(2, 2, "*{Image}");
    m_doc.CellLongs.set(0, 1, 42);
    const auto built = buildDatabase(m_doc, m_test);
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(builtCells(m_doc, m_test), "12 01 00 04 00 AA BB CC 00");
    EXPECT_EQ(built.value().images.size(), 1u);
    EXPECT_EQ(built.value().usedPictures, (std::vector<std::filesystem::path>{path}));
    EXPECT_EQ(m_doc.grd.text(2, 2), "*{Image}"); // until the file is safely written
    EXPECT_TRUE(m_test.files.has(path));
}

TEST_F(PictureSave, anyOtherTextIsANewPicture) {
    open("");
    m_test.files.put("/app/Temp/rlw_2147483647.rle", hex("AA"));
    m_doc.grd.setText(2, 2, "anything");
    m_doc.CellLongs.set(0, 1, 2147483647);
    EXPECT_EQ(builtCells(m_doc, m_test), "12 01 00 02 00 AA 00");
}

TEST_F(PictureSave, emptyNewPictureHasLengthOne) {
    open("");
    m_test.files.put("/app/Temp/rlw_0000000001.rle", {});
    m_doc.grd.setText(2, 2, "*{Image}");
    m_doc.CellLongs.set(0, 1, 1);
    EXPECT_EQ(builtCells(m_doc, m_test), "12 01 00 01 00 00");
}

TEST_F(PictureSave, missingNewPictureFailsWithItsPath) {
    open("");
    m_doc.grd.setText(2, 2, "*{Image}");
    m_doc.CellLongs.set(0, 1, 42);
    EXPECT_NE(errorOfSave().find("/app/Temp/rlw_0000000042.rle"), std::string::npos);
}

TEST_F(PictureSave, newPictureMayHave65534Bytes) {
    open("");
    const std::filesystem::path path = "/app/Temp/rlw_0000000042.rle";
    m_doc.grd.setText(2, 2, "*{Image}");
    m_doc.CellLongs.set(0, 1, 42);
    m_test.files.put(path, Bytes(65534, 0xAA));
    EXPECT_EQ(builtCells(m_doc, m_test).substr(0, 17), "12 01 FF FF 00 AA");
    m_test.files.put(path, Bytes(65535, 0xAA));
    EXPECT_EQ(errorOfSave(), "Save_DB : buildRecord20: The picture \"/app/Temp/rlw_0000000042.rle\" has more than "
                             "65534 bytes.");
}

TEST_F(PictureSave, largestPictureComesBack) {
    open("12 01 FFFF 00 'x'*65534 00");
    EXPECT_EQ(m_doc.grd.text(2, 2), " {Image}");
    EXPECT_EQ(builtCells(m_doc, m_test).size(), 3 * (2 + 2 + 65536) - 1u);
}

TEST(PictureFileName, hasTenDigits) {
    EXPECT_EQ(pictureFileName(0), "rlw_0000000000.rle");
    EXPECT_EQ(pictureFileName(42), "rlw_0000000042.rle");
    EXPECT_EQ(pictureFileName(2147483647), "rlw_2147483647.rle");
}

} // namespace
} // namespace tallybook::pdb
