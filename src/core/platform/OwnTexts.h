// The program's own messages, so that they stand together and apart from the fixed ones of its commands. All are
// Windows-1252.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::platform::texts {

inline constexpr std::string_view kTooManyRecords = "A Tallybook cannot hold more than 65448 records.";

// Shown where a document would be.
inline constexpr std::string_view kNothingOpen = "Open a Tallybook with Ctrl+O, or drop its file here.";

// Work that is still to come.
inline constexpr std::string_view kImageEditor = "Editing images";
inline constexpr std::string_view kExternalPicker = "Picking a record of another Tallybook";
inline constexpr std::string_view kListEditor = "Editing the items of a list";
inline constexpr std::string_view kAutoWriter = "The auto writer";
inline constexpr std::string_view kChoicesToCome = "Views and filters cannot be chosen in this version yet.";
inline std::string notBuilt(std::string_view what) {
    return std::string(what) + " is not part of this version yet.";
}
inline constexpr std::string_view kKeyOutOfRange = "The number is too large for a key.  Conversion not performed.";

// A path or name between double quotes.
inline std::string quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

// Files. `action` is a verb, as "read"; `reason` has no full stop.
inline std::string cannot(std::string_view action, std::string_view path, std::string_view reason) {
    return "Cannot " + std::string(action) + ' ' + quoted(path) + ": " + std::string(reason) + '.';
}
inline std::string notRegular(std::string_view path) {
    return quoted(path) + " is not a regular file.";
}
inline std::string readOnlyFile(std::string_view path) {
    return quoted(path) + " is read-only and was not replaced.";
}
inline std::string tooLarge(std::string_view path) {
    return quoted(path) + " is too large to be read.";
}
// A save that stopped before the old file was touched. `cause` is a sentence.
inline std::string notSaved(std::string_view path, std::string_view cause) {
    return quoted(path) + " was not saved; what was there before is untouched. " + std::string(cause);
}
// A save whose new file is in its place, but may be lost if the computer stops now.
inline std::string savedUnsafely(std::string_view path, std::string_view cause) {
    return quoted(path) + " was saved, but the disk did not confirm it. Save it again, or elsewhere. " +
           std::string(cause);
}
inline constexpr std::string_view kReadBackDiffers = "What was read back differs from what was written.";
inline constexpr std::string_view kNoTemporaryName = "there are too many temporary files beside it";

// Reasons why the bytes of a file break its format. They stand behind "Record 85: " and have no full stop.
inline constexpr std::string_view kFileEndsInside = "the file ends inside it";
inline constexpr std::string_view kTextWithoutEnd = "the file ends inside a text";
inline constexpr std::string_view kPositionsTooLarge = "the file would pass 4294967295 bytes";

inline std::string moreThan(std::int64_t count, std::string_view things, std::int64_t most) {
    return std::to_string(count) + ' ' + std::string(things) + ", at most " + std::to_string(most);
}
inline std::string fewerThan(std::int64_t count, std::string_view things, std::int64_t least) {
    return std::to_string(count) + ' ' + std::string(things) + ", at least " + std::to_string(least);
}
inline std::string slotBeyond(int slot, int highest) {
    return "field slot " + std::to_string(slot) + ", at most " + std::to_string(highest);
}
inline std::string startsBeyondEnd(std::uint64_t offset, std::uint64_t size) {
    return "it starts at byte " + std::to_string(offset) + ", the file has " + std::to_string(size) + " bytes";
}

// Pictures that a save cannot take over.
inline std::string noPictureThere(std::string_view path, std::int64_t position) {
    return quoted(path) + " holds no picture at byte " + std::to_string(position) + '.';
}
inline std::string pictureTooLarge(std::string_view path, std::int64_t most) {
    return "The picture " + quoted(path) + " has more than " + std::to_string(most) + " bytes.";
}

// Names for new files. The dialog is shown again.
inline constexpr std::string_view kNameTooLong = "Filename not valid.  A file name may have at most 240 bytes.";
inline constexpr std::string_view kNameForbidden =
    "Filename not valid.  A file name may not have any of these characters: \\ / : * ? \" < > |";
inline std::string replaceFile(std::string_view path) {
    return quoted(path) + " exists already.  Do you want to replace it?";
}

// Somebody else, a sync perhaps, wrote the file that is about to be saved.
inline std::string changedMeanwhile(std::string_view path) {
    return quoted(path) + " was changed by another program since it was opened.  Do you want to replace it with what "
                          "is open here?";
}

} // namespace tallybook::platform::texts
