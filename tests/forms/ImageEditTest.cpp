#include "core/forms/ImageEdit.h"

#include "core/forms/Bmp.h"
#include "core/forms/PalmBitmap.h"
#include "document/FileFixture.h"
#include "forms/Pictures.h"
#include "support/Hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using document::Outcome;
using platform::Bytes;
using test::drawn;
using test::hex;
using test::kBlack;
using test::kWhite;
using testing::ElementsAre;

const std::string kConversionFailed = "Image conversion failed with following error: ";
const std::filesystem::path kBooks = "/home/MS2_Books.pdb";
constexpr int kRow = model::kFirstDataRow;
constexpr int kCover = 9;

// Numbers from a list, then counting on.
RandomNumber numbers(std::vector<std::uint32_t> list) {
    return [list = std::move(list), next = std::size_t{0}]() mutable {
        return next < list.size() ? list[next++] : static_cast<std::uint32_t>(1000 + next++);
    };
}

// "/home/MS2_Books.pdb", open, its first record with a picture in field 9.
class ImageEditTest : public test::FileFixture {
protected:
    ImageEditTest() {
        makeBooks();
        EXPECT_EQ(open(kBooks), Outcome::Done);
    }

    void putPictureAndSave(const Bitmap& bitmap) {
        const auto bytes = writePalmBitmap(bitmap);
        ASSERT_TRUE(bytes.ok());
        ASSERT_TRUE(setPicture(*opened, t, kRow, kCover, bytes.value(), numbers({77})).ok());
        ASSERT_EQ(document::savePDBFile20(*opened, t, kBooks), Outcome::Done);
    }
    std::string cover(int record = 0) const { return openedCell(record, kCover); }
    int temporaryFiles() {
        int count = 0;
        const auto names = t.files.list("/app/Temp");
        for (const auto& name : names.value())
            count += name.filename().string().starts_with("rlw_") ? 1 : 0;
        return count;
    }

    Bitmap m_chequers = drawn(1, {kWhite, kBlack}, {"10101", "01010", "11111"});
    Bitmap m_line = drawn(1, {kWhite, kBlack}, {"11111"});
};

TEST_F(ImageEditTest, cellWithoutPictureGetsANewOne) {
    {
        ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
        edit.load();
        ASSERT_TRUE(edit.bitmap());
        EXPECT_EQ(edit.bitmap()->width, 160);
        EXPECT_TRUE(edit.canSave());
        EXPECT_EQ(edit.workingFile(), "/app/Temp/rlw_0000000005.bmp");
        EXPECT_TRUE(edit.setBitmap(m_chequers));
        EXPECT_EQ(edit.status(), "5 x 3, 2 colours, 22 bytes");
        EXPECT_TRUE(edit.save());
    }
    EXPECT_EQ(cover(), "*{Image}");
    EXPECT_TRUE(opened->DocModified);
    EXPECT_EQ(temporaryFiles(), 1); // the picture that waits
}

TEST_F(ImageEditTest, cancelLeavesTheCellAsItWas) {
    {
        ImageEdit edit(*opened, t, numbers({}), kRow, kCover);
        edit.load();
        EXPECT_TRUE(edit.setBitmap(m_chequers));
    }
    EXPECT_EQ(cover(), "");
    EXPECT_FALSE(opened->DocModified);
    EXPECT_EQ(temporaryFiles(), 0);
}

TEST_F(ImageEditTest, pictureGoesThroughSaveAndOpen) {
    putPictureAndSave(m_chequers);
    EXPECT_EQ(cover(), " {Image}");
    EXPECT_EQ(temporaryFiles(), 0);
    ASSERT_EQ(open(kBooks), Outcome::Done);
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    ASSERT_TRUE(edit.bitmap());
    EXPECT_EQ(*edit.bitmap(), m_chequers);
    EXPECT_FALSE(edit.changed());
    EXPECT_TRUE(edit.save()); // nobody changed it
    EXPECT_EQ(cover(), " {Image}");
    EXPECT_FALSE(opened->DocModified);
}

TEST_F(ImageEditTest, secondEditStartsFromTheFirst) {
    putPictureAndSave(m_chequers);
    {
        ImageEdit edit(*opened, t, numbers({5, 6}), kRow, kCover);
        edit.load();
        EXPECT_TRUE(edit.setBitmap(m_line));
        EXPECT_TRUE(edit.save());
    }
    EXPECT_EQ(opened->CellLongs.get(0, kCover), 6);
    {
        ImageEdit edit(*opened, t, numbers({7, 8}), kRow, kCover);
        edit.load();
        EXPECT_EQ(*edit.bitmap(), m_line);
        EXPECT_TRUE(edit.setBitmap(m_chequers));
        EXPECT_TRUE(edit.save());
    }
    EXPECT_EQ(opened->CellLongs.get(0, kCover), 8);
    EXPECT_EQ(temporaryFiles(), 1); // the first one's went
    ASSERT_EQ(document::savePDBFile20(*opened, t, kBooks), Outcome::Done);
    EXPECT_EQ(temporaryFiles(), 0);
    const auto bytes = pictureBytes(*opened, t, kRow, kCover);
    ASSERT_TRUE(bytes.ok());
    EXPECT_EQ(readPalmBitmap(bytes.value()).value(), m_chequers);
}

// What another program does to the working file.
TEST_F(ImageEditTest, trueColourIsSaidAtSaving) {
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    Bytes bmp = writeBmp(m_chequers);
    bmp[28] = 24;
    t.files.put(edit.workingFile(), bmp);
    EXPECT_FALSE(edit.update());
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_FALSE(edit.save());
    EXPECT_THAT(t.user.texts(), ElementsAre(kConversionFailed + "Invalid Bit Depth. Bitmap must be either black and "
                                                                "white, 16 colors, or 256 colors."));
    EXPECT_FALSE(edit.canSave());
    EXPECT_EQ(cover(), "");
    t.files.put(edit.workingFile(), writeBmp(m_line));
    EXPECT_TRUE(edit.update());
    EXPECT_TRUE(edit.canSave());
    EXPECT_TRUE(edit.save());
    EXPECT_EQ(cover(), "*{Image}");
}

TEST_F(ImageEditTest, workingFileThatVanishedIsSaid) {
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    ASSERT_TRUE(t.files.remove(edit.workingFile()).ok());
    EXPECT_FALSE(edit.update());
    EXPECT_TRUE(edit.bitmap()); // the last one stays in view
    EXPECT_FALSE(edit.save());
    EXPECT_THAT(t.user.texts(), ElementsAre(kConversionFailed + "File not found"));
}

TEST_F(ImageEditTest, importTakesABitmapFile) {
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    t.files.put("/home/line.bmp", writeBmp(m_line));
    EXPECT_TRUE(edit.importFile("/home/line.bmp"));
    EXPECT_EQ(*edit.bitmap(), m_line);
    t.files.put("/home/none.bmp", hex("'none'"));
    EXPECT_FALSE(edit.importFile("/home/none.bmp"));
    EXPECT_EQ(*edit.bitmap(), m_line);
    EXPECT_TRUE(edit.canSave()); // what was there is good
    EXPECT_THAT(t.user.texts(), ElementsAre(kConversionFailed + "Bad bitmap file"));
}

TEST_F(ImageEditTest, damagedPictureIsSaidAndCanBeReplaced) {
    putPictureAndSave(m_chequers);
    const auto position = static_cast<std::size_t>(static_cast<std::uint32_t>(opened->CellLongs.get(0, kCover)));
    setByte(opened->TempCopyPath, position - 1 + 5 + 9, 9); // the picture's version
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    EXPECT_THAT(t.user.texts(), ElementsAre(kConversionFailed + "Invalid data"));
    EXPECT_FALSE(edit.canSave());
    EXPECT_FALSE(edit.bitmap());
    t.files.put("/home/line.bmp", writeBmp(m_line));
    EXPECT_TRUE(edit.importFile("/home/line.bmp"));
    EXPECT_TRUE(edit.canSave());
}

TEST_F(ImageEditTest, fileThatHasGoneIsSaid) {
    putPictureAndSave(m_chequers);
    ASSERT_TRUE(t.files.remove(opened->TempCopyPath).ok());
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    EXPECT_THAT(t.user.texts(), ElementsAre("Cannot find image file " + opened->TempCopyPath.string() +
                                            ". External references for field \"Cover\" will not be displayed"));
    EXPECT_FALSE(edit.canSave());
}

TEST_F(ImageEditTest, readOnlyDatabaseIsLookedAt) {
    putPictureAndSave(m_chequers);
    opened->CurrDB20.ReadOnly = 1;
    ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
    edit.load();
    EXPECT_EQ(*edit.bitmap(), m_chequers);
    EXPECT_FALSE(edit.canSave());
}

TEST_F(ImageEditTest, temporaryFolderThatCannotBeWrittenIsSaid) {
    putPictureAndSave(m_chequers);
    for (int call = 1; call < 40; ++call) {
        t.user.messages.clear();
        {
            ImageEdit edit(*opened, t, numbers({5}), kRow, kCover);
            t.files.failAt(call, static_cast<int>(std::errc::no_space_on_device));
            edit.load();
            EXPECT_TRUE(edit.bitmap() || !t.user.messages.empty()) << call;
        }
        t.files.failAt(0, 0);
        EXPECT_EQ(cover(), " {Image}") << call;
    }
    EXPECT_LE(temporaryFiles(), 2); // of the removals that failed themselves
}

TEST_F(ImageEditTest, takenNumberIsDrawnAgain) {
    t.files.put("/app/Temp/rlw_0000000005.rle", {});
    t.files.put("/app/Temp/rlw_0000000006.bmp", {});
    const auto file = GenerateTemporaryFileName(t, numbers({5, 6, 0, 9}));
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(file.value().number, 9);
    const auto none = GenerateTemporaryFileName(t, [] { return 5U; });
    EXPECT_FALSE(none.ok());
}

// A number above 2^31 would be a negative one in the cell.
TEST_F(ImageEditTest, numbersArePositive) {
    const auto file = GenerateTemporaryFileName(t, [] { return 0xFFFFFFFFU; });
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(file.value().number, 2147483647);
    EXPECT_EQ(file.value().rle, "/app/Temp/rlw_2147483647.rle");
}

TEST_F(ImageEditTest, closingDropsWhatWasNotSaved) {
    t.files.put("/app/Temp/rlw_note.rle", {});
    t.files.put("/app/Temp/rlw_0000000099.rle", {}); // of another run
    ASSERT_TRUE(setPicture(*opened, t, kRow, kCover, writePalmBitmap(m_line).value(), numbers({5})).ok());
    dropPictures(*opened, t);
    EXPECT_FALSE(t.files.has("/app/Temp/rlw_0000000005.rle"));
    EXPECT_TRUE(t.files.has("/app/Temp/rlw_0000000099.rle"));
    dropStrayPictures(t);
    EXPECT_FALSE(t.files.has("/app/Temp/rlw_0000000099.rle"));
    EXPECT_TRUE(t.files.has("/app/Temp/rlw_note.rle"));
}

TEST_F(ImageEditTest, bytesThatAreNoPictureAreRefused) {
    const auto status = setPicture(*opened, t, kRow, kCover, hex("'none'"), numbers({5}));
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().number, 515);
    EXPECT_EQ(cover(), "");
}

} // namespace
} // namespace tallybook::forms
