// Bytes of a whole file to a document and back. What asks the user, joins, calculates or shows stands in document/.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <bitset>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::pdb {

// What the cell of a picture shows that is in the file. Any other text stands for a new picture, whose temporary file
// is numbered in CellLongs.
inline constexpr std::string_view kPictureMark = " {Image}";

using FieldSet = std::bitset<model::MaxFieldSlots>;

// What a caller wants to do between the steps of a read.
struct ReadSteps {
    // After the properties: the fields whose cells are wanted. Those of the others are passed over, and so are the
    // categories. Absent: all of them.
    std::function<FieldSet(const model::DatabaseModel&)> onlyFields;
    // After record 0 of a file of format 0.99, ahead of the login: what the user should know about it.
    std::function<void()> onFormat099;
    // After record 0: the login. False ends the read with an error of kind Refused. Absent: no login.
    std::function<bool(model::Document&)> afterHeaderValues;
    // After the field table: the grid's columns are made. Absent: no grid work.
    std::function<void(model::Document&)> afterFieldTable;
    // Now and then while data records are read: how many of how many.
    std::function<void(int record, int total)> onRecord;
};

// Reads a file of format 2.x into an empty document: header, record list, properties, then each data record into
// a grid row and the tables. Key fields are filled; joins and expressions are not. On an error the document is
// half filled and must be thrown away. The file name is used in messages only.
platform::Status readDatabase(model::Document& doc, platform::ByteSpan file, const std::string& fileName,
                              const platform::Regional& regional, const ReadSteps& steps = {});

// Reads records 0 to 86 alone, without a grid or a password prompt: another database's structure. For an Auto
// Incremental field this reads the older layout, so its next value is normally 1 on this path.
platform::Status readStructure(model::DatabaseModel& db, platform::ByteSpan file, const std::string& fileName);

// Data records of a file by its header and record list, deleted ones left out; an error when these cannot be read,
// are not ours, or tell of fewer records than the fixed ones. The first kHeadBytes of a file are enough.
enum class FileFormat : std::uint8_t { Older, Present };
inline constexpr std::size_t kHeadBytes = 78 + 8 * 65535;
platform::Result<int> countDataRecords(platform::ByteSpan file, FileFormat format);

// What must be so before a file is read at all.
enum class Verdict {
    Good,
    WrongCreator, // no Tallybook
    OutOfOrder,   // a fixed record does not begin with its number: a sync was writing the file
};
platform::Result<Verdict> verifyRecords(platform::ByteSpan file);

// The bytes of a document as a file. `images` gives the file that unchanged pictures are copied from. The places
// of the pictures in the result come back beside it, for CellLongs once the file is safely written.
struct ImagePlace {
    int record = 0;
    int slot = 0;
    std::int32_t position = 0; // of the cell's type byte, counted from 1
};
struct BuiltFile {
    platform::Bytes bytes;
    std::vector<ImagePlace> images;
    std::vector<std::filesystem::path> usedPictures; // temporary picture files, to be deleted after the save
};
struct BuildSteps {
    std::function<void(int record, int total)> onBuild; // each data record
};
platform::Result<BuiltFile> buildDatabase(model::Document& doc, platform::Services& services,
                                          const BuildSteps& steps = {});

} // namespace tallybook::pdb
