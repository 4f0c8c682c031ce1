// The program's own messages, so that they stand together and apart from the fixed ones of its commands. All are
// Windows-1252.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::platform::texts {

inline constexpr std::string_view kTooManyRecords = "A Tallybook cannot hold more than 65448 records.";

// Shown where a document would be.
inline constexpr std::string_view kNothingOpen = "Open a Tallybook with Ctrl+O, or drop its file here.";

// Shown where a grid has no cells.
inline constexpr std::string_view kNoFields =
    "Go to a column with the arrow keys or a click on its name, and make it a field with Alt+Enter.  Ins adds a "
    "record.";
inline constexpr std::string_view kFirstRecord = "There are no records.  Ins adds one.";
inline constexpr std::string_view kNoRecords = "There are no records."; // and none can be added
inline constexpr std::string_view kAllHidden = "The filter hides all records.";
inline constexpr std::string_view kViewWithoutColumns =
    "This view has no columns.  \"Edit Views...\" in the list of views gives it some.";

// The key Del with a block selected.
inline constexpr std::string_view kOneCellAtATime = "Only one cell can be emptied at a time.";

// In the status bar.
inline constexpr std::string_view kReadOnly = "Read-only";

// Work that is still to come.
inline constexpr std::string_view kImageEditor = "Editing images";
inline std::string notBuilt(std::string_view what) {
    return std::string(what) + " is not part of this version yet.";
}
inline constexpr std::string_view kKeyOutOfRange = "The number is too large for a key.  Conversion not performed.";

// What was typed names no day; `example` is one as the region writes it.
inline std::string noDate(std::string_view example) {
    return "Please specify a valid date (e.g. " + std::string(example) + ").";
}

// A search goes through the records that a filter hides, too.
inline std::string foundHidden(int record) {
    return "Found in record " + std::to_string(record) + ", which the filter hides.";
}

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
inline constexpr std::string_view kNotEnoughMemory = "There is not enough memory for this.";
inline std::string notEnoughMemory(std::string_view path) {
    return "There is not enough memory for " + quoted(path) + '.';
}
// A file of another name than the one that was given.
inline std::string openedInstead(std::string_view opened, std::string_view given) {
    return quoted(given) + " is not there; " + quoted(opened) + " was opened.";
}
inline std::string savedInstead(std::string_view saved) {
    return "Saved as " + quoted(saved) + '.';
}
inline constexpr std::string_view kNoTrash = "there is no trash to move it to";
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
inline std::string unknownType(int type) {
    return "field type " + std::to_string(type) + ", which the format does not have";
}
inline std::string bytesLeftOver(std::size_t bytes) {
    return std::to_string(bytes) + " bytes are left over";
}
inline constexpr std::string_view kNoEndMark = "it has no end mark";
inline constexpr std::string_view kInsideAnother = "it starts inside another one";
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

inline constexpr std::string_view kNoTallybook = "The file is not a Tallybook.";

// Names for new files. The dialog is shown again.
inline constexpr std::string_view kNameMissing = "Filename not valid.  A Tallybook needs a name behind \"MS2_\".";
inline constexpr std::string_view kNameTooLong =
    "Filename not valid.  The name of a Tallybook may have at most 27 characters.";
inline std::string nameForeign(std::string_view codePoint) {
    return "Filename not valid.  The character " + std::string(codePoint) + " cannot be stored in a Tallybook.";
}
inline constexpr std::string_view kNameForbidden =
    "Filename not valid.  A file name may not have any of these characters: \\ / : * ? \" < > |";
inline std::string replaceFile(std::string_view path) {
    return quoted(path) + " exists already.  Do you want to replace it?";
}

// The handheld's users, their databases and their install queue.
// The user list's entry for a folder that is no user's.
inline constexpr std::string_view kOwnFolder = "(this Tallybook's folder)";
// Said of a file in another folder than the one that is listed.
inline std::string convertedTo(std::string_view path) {
    return "The Tallybook was converted to " + quoted(path) + '.';
}
inline std::string userGone(std::string_view user) {
    return "The folder of the user " + quoted(user) + " is not there any more.";
}
inline std::string userAmbiguous(std::string_view user) {
    return "More than one user is called " + quoted(user) + ".";
}
inline std::string leadsOut(std::string_view path) {
    return quoted(path) + " is a link that leads out of its folder and is left alone.";
}
inline constexpr std::string_view kSyncRuns = "A sync is running.  Try again when it has ended.";
inline std::string noQueueLine(std::string_view path) {
    return quoted(path) + " is too long, or has a line end in it, and cannot be put into the install queue.";
}
inline std::string queueChanged(std::string_view path) {
    return "The install queue " + quoted(path) + " was changed by another program meanwhile.  Try again.";
}
// `cause` is a sentence.
inline std::string deleteForGood(std::string_view cause) {
    return std::string(cause) + "  Do you want to delete the file for good?";
}

// Somebody else, a sync perhaps, wrote the file that is about to be saved.
inline std::string changedMeanwhile(std::string_view path) {
    return quoted(path) + " was changed by another program since it was opened.  Do you want to replace it with what "
                          "is open here?";
}

inline std::string goneMeanwhile(std::string_view path) {
    return quoted(path) + " was moved or deleted by another program since it was opened.  Do you want to write it "
                          "anew with what is open here?";
}

// What can be wrong with the text of an advanced expression. docs/expressions.md lists them.
inline constexpr std::string_view kExpressionEmpty = "The expression is empty.";
inline constexpr std::string_view kValueMissing = "A value is missing here.";
inline constexpr std::string_view kOperatorMissing = "An operator is missing here.";
inline constexpr std::string_view kBracketNotClosed = "The bracket is not closed.";
inline constexpr std::string_view kNothingToClose = "There is no open bracket to be closed.";
inline constexpr std::string_view kCommaOutside = "A comma may stand between the values of a function only.";
inline constexpr std::string_view kNestedTooDeeply = "The expression is nested too deeply.";
inline constexpr std::string_view kTooManyTokens = "An expression may have at most 48 parts.";
inline constexpr std::string_view kNumberTooLong = "A number may have at most 10 characters.";
inline constexpr std::string_view kTextTooLong = "A text may have at most 10 characters.";
inline constexpr std::string_view kTextNotClosed = "The text has no closing quote.";
inline constexpr std::string_view kSquareBracketNotClosed = "The square bracket is not closed.";
inline constexpr std::string_view kBraceNotClosed = "The brace is not closed.";
inline constexpr std::string_view kPrevNotClosed = "Prev has no closing bracket.";
// Names in messages are cut to what a person can read at a glance.
inline std::string quotedStart(std::string_view name) {
    constexpr std::size_t kShown = 32;
    std::string start(name.substr(0, kShown));
    if (name.size() > kShown)
        start += "...";
    return '"' + start + '"';
}
inline std::string noSuchWord(std::string_view word) {
    return "There is no field, constant or function " + quotedStart(word) + '.';
}
inline std::string noSuchField(std::string_view name) {
    return "There is no field " + quotedStart(name) + '.';
}
inline std::string noSuchFunction(std::string_view name) {
    return "There is no function " + quotedStart(name) + '.';
}
inline std::string noSuchColour(std::string_view name) {
    return "There is no colour " + quotedStart(name) + ". Colours are black, red, green, blue and yellow.";
}
inline std::string noSuchSign(std::string_view sign) {
    return quotedStart(sign) + " means nothing here.";
}
inline std::string foreignSign(std::string_view sign, std::string_view here) {
    return quotedStart(sign) + " means nothing here. Write " + quotedStart(here) + '.';
}
// Behind a message of what there is not; nothing for no idea.
inline std::string didYouMean(std::string_view written) {
    return written.empty() ? std::string() : " Did you mean " + std::string(written) + '?';
}
inline std::string functionNeedsBracket(std::string_view name) {
    return quotedStart(name) + " needs an opening bracket behind it.";
}
inline std::string argumentCount(std::string_view function, int fewest, int most) {
    std::string count = std::to_string(fewest);
    if (most == fewest + 1)
        count += " or " + std::to_string(most);
    else if (most > fewest)
        count += " or more";
    return std::string(function) + " takes " + count + (count == "1" ? " value." : " values.");
}
// Of tokens that a file carries.
inline std::string unknownToken(std::uint32_t code) {
    return "The expression has a part that is not known (code " + std::to_string(code) + ").";
}
inline std::string noNumber(std::string_view text) {
    return quotedStart(text) + " is no number.";
}

// Why an expression has no value for a record.
inline constexpr std::string_view kFreeSlotInExpression = "The expression names a field that is not there.";
inline constexpr std::string_view kDivisionByZero = "Division by zero.";
inline constexpr std::string_view kRootOfNegative = "There is no square root of a negative number.";
inline constexpr std::string_view kNumberTooLarge = "The number is too large.";
inline constexpr std::string_view kNoSuchChoice = "Sel has no value of this number.";
inline constexpr std::string_view kDateOutOfRange = "The date does not exist, or its year is not in 100 to 9999.";
inline constexpr std::string_view kTextIsNoNumber = "The text is no number.";
inline constexpr std::string_view kTextIsNoDate = "The text is no date.";
inline constexpr std::string_view kTextIsNoTime = "The text is no time.";
inline constexpr std::string_view kTextIsNoCondition = "The text is neither a number nor True or False.";
inline constexpr std::string_view kNumberWanted = "A date or a time stands where a number belongs.";
inline constexpr std::string_view kDateWanted = "A number or a time stands where a date belongs.";
inline constexpr std::string_view kTimeWanted = "A date stands where a time or a number of seconds belongs.";
inline constexpr std::string_view kNoDuration =
    "A time of less than 0 seconds, or of a day and more, cannot be shown.";
inline constexpr std::string_view kNotComparable = "A date and a time cannot be compared.";

// Conversions.
inline constexpr std::string_view kSpecTooShort = "The conversion spec ends too early.";
inline std::string specLineTooShort(int line) {
    return "Line " + std::to_string(line) + " of the conversion spec is too short.";
}
inline std::string specNumberOutOfRange(int line) {
    return "Line " + std::to_string(line) + " of the conversion spec holds a number that is out of range.";
}
inline std::string specHoldsQuote(std::string_view key) {
    return "A conversion spec cannot hold a double quote; there is one in " + std::string(key.substr(0, 3)) + '.';
}
inline constexpr std::string_view kSpecRowTooLarge = "A row of a conversion spec holds numbers up to 99.";
inline constexpr std::string_view kSpecNameEmpty = "Enter the Conversion Specs name.";
// A line of the log. `fate` as "left out".
inline std::string valueLine(std::uint64_t record, std::string_view field, std::string_view value,
                             std::string_view fate, std::string_view reason) {
    return "Record " + std::to_string(record) + ", " + std::string(field) + ": " + quoted(value) + ' ' +
           std::string(fate) + ": " + std::string(reason);
}
inline std::string exportingRecord(int record, int total) {
    return "Exporting record " + std::to_string(record) + " of " + std::to_string(total);
}
inline std::string importingRecord(std::uint64_t record, std::uint64_t total) {
    return "Importing record " + std::to_string(record) + " of " + std::to_string(total);
}
inline constexpr std::string_view kTextCut = "a text may have at most 254 characters";
inline constexpr std::string_view kRounded = "rounded to a whole number";
inline std::string becomes(std::string_view text) {
    return "the field shows it as " + quoted(text);
}
inline std::string unclosedRecord(std::uint64_t record) {
    return "Record " + std::to_string(record) +
           " begins where a double quote is opened that nothing closes: it holds the rest of the file.";
}
inline std::string recordTooLarge(std::uint64_t record, std::size_t most) {
    return "Record " + std::to_string(record) + " has more than " + std::to_string(most) +
           " bytes. Is there a double quote that nothing closes?";
}
inline std::string noText(std::string_view path) {
    return quoted(path) + " is no text: it holds bytes of 0.";
}
inline std::string columnsPassedOver(std::string_view field, std::string_view type) {
    return std::string(field) + ": the column was passed over, as nothing is imported into a field of type " +
           std::string(type) + '.';
}
inline std::string recordHasMore(std::uint64_t record, std::size_t items, std::size_t columns) {
    return "Record " + std::to_string(record) + " has " + std::to_string(items) + " values for " +
           std::to_string(columns) + " columns.";
}
inline std::string dataWithoutField(std::uint64_t record, std::size_t column) {
    return "Record " + std::to_string(record) + " has a value in column " + std::to_string(column) +
           ", which belongs to no field.";
}
inline std::string unknownTypeWord(std::string_view word) {
    return quoted(word) + " is no type of a field.";
}
inline constexpr std::string_view kStopped = "Stopped. Nothing was changed.";
inline std::string nothingChanged(std::string_view cause) {
    return std::string(cause) + " Nothing was changed.";
}
inline std::string noSuchColumn(std::string_view name) {
    return "There is no column " + quoted(name) + '.';
}
// The copy of a database that a run makes before it begins.
inline std::string safetyCopy(std::string_view path) {
    return "A copy of the Tallybook from before lies in " + quoted(path) + '.';
}
inline constexpr std::string_view kOtherRun = "Another conversion is running.  Try again when it has ended.";
inline constexpr std::string_view kSpecUnreadable = "(cannot be read)";
inline std::string noSuchUser(std::string_view user) {
    return "There is no user " + quoted(user) + '.';
}
inline std::string runningSpec(std::string_view name) {
    return "Running " + std::string(name);
}
inline constexpr std::string_view kNoColumnMatches = "No column is called like a field.";
inline std::string columnIgnored(std::string_view name) {
    return "Column " + quoted(name) + " is called like no field and was passed over.";
}
inline std::string moreLines(std::uint64_t count) {
    return "and " + std::to_string(count) + " more";
}

// The designers. `what` begins a sentence, as "The name".
inline std::string tooManyCharacters(std::string_view what, std::size_t most) {
    return std::string(what) + " may have at most " + std::to_string(most) + " characters.";
}
inline std::string holdsNul(std::string_view what) {
    return std::string(what) + " holds a character that cannot be stored.";
}
// Characters outside the code page; `codePoint` as "U+4E2D".
inline std::string foreignCharacter(std::string_view codePoint) {
    return "The character " + std::string(codePoint) + " cannot be stored in a Tallybook.";
}
inline constexpr std::string_view kNextValueNotWhole =
    "The next value must be a whole number from -2147483648 to 2147483647.";
inline std::string filterNameTaken(std::string_view name) {
    return "A filter cannot have the name " + quoted(name) + ": another entry of the list has it.";
}
inline constexpr std::string_view kNoOtherTallybook = "The other Tallybook was not selected";
inline constexpr std::string_view kFewerDigits =
    "Digits that are not shown any more will be gone with the next save.\nDo you want to show fewer digits?";
// Before another one is shown.
inline constexpr std::string_view kKeepFilter = "The filter was changed. Do you want to store its changes?";
inline constexpr std::string_view kKeepView = "The view was changed. Do you want to save its changes?";
inline constexpr std::string_view kTooManyColumns = "A view can have at most 81 columns.";

} // namespace tallybook::platform::texts
