// Opening, saving and closing the one document.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <filesystem>

namespace tallybook::document {

// The result of a command that the user can turn down half way.
enum class Outcome {
    Done,
    Refused, // by a rule, an error or a password; what had to be said has been said
    Cancelled,
};

enum class ReadMode { Show, Quiet }; // Quiet leaves the views, the filters and the cursor alone

// Fills the document from a file: check, temporary copy, header, login, properties, records, keys, joins,
// calculated columns, views. Anything that goes wrong has been shown; the document is then empty and FileOK clear.
Outcome readPDBFile20(model::Document& doc, platform::Services& services, const std::filesystem::path& path,
                      ReadMode mode = ReadMode::Show);

// Reads the file into `doc`, refreshes the copy in Backup, sets names and caption. A file of the older format is
// answered with "Old Format". The caller has closed what was open.
Outcome OpenDatabase(model::Document& doc, platform::Services& services, const std::filesystem::path& path);

// A new database: one list of categories, no fields, no records, caption "New Database".
void CreateNewDatabase(model::Document& doc, platform::Services& services);

// Builds and writes the file, whole or not at all, renews the temporary copy and the places of the pictures. Does
// not touch DocModified, the paths or the recent files.
Outcome savePDBFile20(model::Document& doc, platform::Services& services, const std::filesystem::path& target);

// The Save command: commits the open edit, refuses a read-only database, asks for a name when there is none yet.
Outcome saveDocument(model::Document& doc, platform::Services& services);

// Asks for a name that starts with "MS2_" and saves under it.
Outcome SaveNew(model::Document& doc, platform::Services& services);

// Save As: SaveNew with its closing words.
Outcome saveAsSub(model::Document& doc, platform::Services& services);

// Before closing: asks when there are unsaved changes. True when the document may be closed.
bool CheckSaveChanges(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
