// Bytes of a file of format 1.x to a document of the present one.
//
// What follows the first values of its records is known in part only, so nothing is forgiven here: bytes that are not
// as docs/file-format.md says make the whole file unreadable, rather than half of it wrong.
#pragma once

#include "core/pdb/Container.h"
#include "core/pdb/Database.h"
#include "core/pdb/OldDB.h"

namespace tallybook::pdb {

// Reads the 78 bytes of the header, which are those of the present format. The creator is not judged.
platform::Result<FileHeader> readheader(ByteReader& in);

// Whether a file is of format 1.x at all: Good or WrongCreator; an error when not even the header is there.
platform::Result<Verdict> verifyOlder(platform::ByteSpan file);

// Record 0, behind its number: views, filters, header values, password. Version comes out as 100 at least; the
// shorter layout of format 0.99 leaves the filters empty, and names views and filters by their number from 00 where
// the file has no name. The reader must end where the record ends.
platform::Status loadDBProps1(ByteReader& in, OldDB& old);

// Record 1, behind its number: the field table. Slot 0 becomes the category list whatever the table says. The reader
// must end where the record ends.
platform::Status loadDBProps2(ByteReader& in, OldDB& old);

// Reads a file into an empty document: header, record list, properties, their conversion, then each data record into
// a grid row and the tables. Key fields are filled; joins and expressions are not, and expressions keep their older
// operators. On an error the document is half filled and must be thrown away. The creator is not judged here.
platform::Status readOlderDatabase(model::Document& doc, platform::ByteSpan file, const platform::Regional& regional,
                                   const ReadSteps& steps = {});

// Reads the fixed records alone, without a grid or a password prompt: another database's structure, converted.
platform::Status readOlderStructure(model::DatabaseModel& db, platform::ByteSpan file);

} // namespace tallybook::pdb
