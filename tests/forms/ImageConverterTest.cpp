#include "core/forms/ImageConverter.h"

#include "core/forms/Bmp.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"
#include "forms/Pictures.h"
#include "support/Hex.h"
#include "support/MemoryFiles.h"

#include <gtest/gtest.h>
#include <system_error>

namespace tallybook::forms {
namespace {

using platform::Bytes;
using test::drawn;
using test::hex;
using test::kBlack;
using test::kWhite;
using test::MemoryFiles;
using test::toHex;

const std::filesystem::path kBmp = "/app/Temp/a.bmp";
const std::filesystem::path kRle = "/app/Temp/a.rle";

TEST(ImageError, everyCodeHasItsText) {
    const std::string start = "Image conversion failed with following error: ";
    EXPECT_EQ(imageErrorMessage(2), start + "File not found");
    EXPECT_EQ(imageErrorMessage(523), start + "File not found");
    EXPECT_EQ(imageErrorMessage(522), start + "Bad bitmap file");
    EXPECT_EQ(imageErrorMessage(521),
              start + "Invalid Bit Depth. Bitmap must be either black and white, 16 colors, or 256 colors.");
    EXPECT_EQ(imageErrorMessage(524), start + "File create failed");
    EXPECT_EQ(imageErrorMessage(511), start + "Out of memory");
    EXPECT_EQ(imageErrorMessage(515), start + "Invalid data");
    EXPECT_EQ(imageErrorMessage(514), start + "Dimension too large");
    EXPECT_EQ(imageErrorMessage(3), start + "Path not found");
    EXPECT_EQ(imageErrorMessage(4), start + "Too many files open");
    EXPECT_EQ(imageErrorMessage(5), start + "Access denied");
    EXPECT_EQ(imageErrorMessage(0), start + "Unknown error!");
    EXPECT_EQ(imageErrorMessage(999), start + "Unknown error!");
}

platform::Error systemError(std::errc number) {
    platform::Error error;
    error.number = static_cast<int>(number);
    return error;
}

class ImageConverter : public ::testing::Test {
protected:
    ImageConverter() { m_files.addFolder("/app/Temp"); }

    int toHandheld() { return codeOf(bitmapToHandheld(m_files, kBmp, kRle)); }
    int toBitmap() { return codeOf(handheldToBitmap(m_files, kRle, kBmp)); }
    static int codeOf(const platform::Status& status) { return status ? 0 : status.error().number; }

    MemoryFiles m_files;
    Bytes m_chequers = hex("0005 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F800");
};

TEST_F(ImageConverter, goesBothWays) {
    m_files.put(kRle, m_chequers);
    EXPECT_EQ(toBitmap(), 0);
    EXPECT_EQ(toHex(m_files.bytes(kBmp)), toHex(writeBmp(drawn(1, {kWhite, kBlack}, {"10101", "01010", "11111"}))));
    ASSERT_TRUE(m_files.remove(kRle).ok());
    EXPECT_EQ(toHandheld(), 0);
    EXPECT_EQ(toHex(m_files.bytes(kRle)), toHex(m_chequers));
}

TEST_F(ImageConverter, tellsOfAMissingFileAndFolder) {
    EXPECT_EQ(toHandheld(), 2);
    EXPECT_EQ(toBitmap(), 2);
    EXPECT_EQ(codeOf(bitmapToHandheld(m_files, "/nowhere/a.bmp", kRle)), 3);
    EXPECT_EQ(codeOf(bitmapToHandheld(m_files, "/app/Temp", kRle)), 5);
    EXPECT_EQ(m_files.count(), 0u);
}

TEST_F(ImageConverter, leavesTheTargetWhenTheSourceIsBad) {
    m_files.put(kBmp, hex("'none'"));
    m_files.put(kRle, hex("'before'"));
    EXPECT_EQ(toHandheld(), 522);
    EXPECT_EQ(toHex(m_files.bytes(kRle)), toHex(hex("'before'")));
    EXPECT_EQ(toBitmap(), 515);
    EXPECT_EQ(toHex(m_files.bytes(kBmp)), toHex(hex("'none'")));
}

TEST_F(ImageConverter, emptyFileIsNoPicture) {
    m_files.put(kBmp, {});
    m_files.put(kRle, {});
    EXPECT_EQ(toHandheld(), 522);
    EXPECT_EQ(toBitmap(), 515);
}

// Whichever call of the disk fails, nothing is left behind.
TEST_F(ImageConverter, fullDiskLeavesNothingBehind) {
    m_files.put(kBmp, writeBmp(drawn(1, {kWhite, kBlack}, {"10101"})));
    ASSERT_EQ(toHandheld(), 0);
    const int calls = m_files.calls();
    for (int failing = 1; failing <= calls; ++failing) {
        MemoryFiles files;
        files.addFolder("/app/Temp");
        files.put(kBmp, writeBmp(drawn(1, {kWhite, kBlack}, {"10101"})));
        files.failAt(failing, static_cast<int>(std::errc::no_space_on_device));
        const int code = codeOf(bitmapToHandheld(files, kBmp, kRle));
        if (code == 0)
            continue; // a call that may fail
        EXPECT_TRUE(code == 524 || code == 5) << failing << ": " << code;
        EXPECT_LE(files.count(), 2u) << failing;
        EXPECT_TRUE(files.has(kBmp));
    }
}

TEST_F(ImageConverter, folderThatCannotBeWrittenIsDenied) {
    m_files.put(kBmp, writeBmp(drawn(1, {kWhite, kBlack}, {"10101"})));
    EXPECT_EQ(codeOf(bitmapToHandheld(m_files, kBmp, "/nowhere/a.rle")), 3);
    EXPECT_EQ(codeOfMaking(systemError(std::errc::permission_denied)), ImageError::AccessDenied);
    EXPECT_EQ(codeOfMaking(systemError(std::errc::no_space_on_device)), ImageError::FileCreateFailed);
    EXPECT_EQ(codeOfMaking(systemError(std::errc::too_many_files_open)), ImageError::TooManyOpenFiles);
    EXPECT_EQ(codeOfReading(systemError(std::errc::not_enough_memory)), ImageError::OutOfMemory);
}

// Larger files than any cell could come from are judged by their first bytes.
TEST_F(ImageConverter, hugeFileIsNotRead) {
    Bytes file(std::size_t{13} * 1024 * 1024, std::uint8_t{0});
    m_files.put(kBmp, file);
    EXPECT_EQ(toHandheld(), 522);
    const Bytes head = writeBmp(drawn(8, {kWhite}, {"0000"}));
    std::copy(head.begin(), head.end(), file.begin());
    m_files.put(kBmp, file);
    EXPECT_EQ(toHandheld(), 514);
    file[28] = 24;
    m_files.put(kBmp, file);
    EXPECT_EQ(toHandheld(), 521);
}

} // namespace
} // namespace tallybook::forms
