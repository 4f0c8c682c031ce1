// Opening, saving and closing the one document.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tallybook::document {

// The result of a command that the user can turn down half way.
enum class Outcome {
    Done,
    Refused, // by a rule, an error or a password; what had to be said has been said
    Cancelled,
};

enum class ReadMode { Show, Quiet }; // Quiet leaves the views, the filters and the cursor alone

// How a path leads to a file. The windows' files have "_" for the blanks of their names, and a file with blanks
// serves where there is none; a path that was typed as such means the file of that very name, and the other serves.
enum class FileNames { WithUnderscores, AsGiven };

// What is kept of a file that is opened, and written for that.
enum class KeptCopies {
    None,      // for those who only look
    Temporary, // what pictures are taken from at the next save
    All,       // and the copy in Backup
};

// Fills the document from a file: check, header, login, properties, records, keys, joins, calculated columns,
// temporary copy, views. The name on the disk has "_" for blanks; the path as given is taken when there is no such
// file. Anything that goes wrong has been shown; the document is then empty and FileOK clear. Cancelled: the login
// was refused, which is said by nothing. The temporary copy is
// made last, so that a file that cannot be read leaves the one of an open document of the same name alone.
Outcome readPDBFile20(model::Document& doc, platform::Services& services, const std::filesystem::path& path,
                      ReadMode mode = ReadMode::Show);

// Said when the bytes of an older file are not as they should be.
inline constexpr std::string_view kLoadFailed = "Failed to load PDB File";

// The same for a file of format 1.x, which becomes a database of the present format: there is no check of leading
// bytes and no temporary copy, the user is told of format 0.99, and calculated columns are those of the older rules.
// Is2xFormat is false until the database is saved, which writes a file of the present format.
Outcome readPDBFile(model::Document& doc, platform::Services& services, const std::filesystem::path& path,
                    ReadMode mode = ReadMode::Show);

// Reads a file of format 1.x and writes it as one of the present format, see savedPath; no open document takes part.
// A file that is there is replaced when the user says so. Whatever is wrong with the older file, `failure` is said in
// the end.
Outcome convertOlder(platform::Services& services, const std::filesystem::path& from, const std::filesystem::path& to,
                     std::string_view failure = kLoadFailed, FileNames names = FileNames::WithUnderscores);

// Reads the file into `doc`, refreshes the copy in Backup, sets names and caption. A name without "MS2_" is that of
// an older file, which is answered with "Old Format" before it is read.
//
// `doc` is a fresh document of the caller's. It asks about the open one (CheckSaveChanges), opens into the fresh
// one and puts it in the open one's place when this gives Done. In every other case it throws the fresh one away:
// what was open, its temporary copy and the copy in Backup are as they were. After Cancelled, a refused login,
// nothing stays open.
//
// With FileNames::AsGiven the user is told when a file of another name was opened.
Outcome OpenDatabase(model::Document& doc, platform::Services& services, const std::filesystem::path& path,
                     FileNames names = FileNames::WithUnderscores, KeptCopies copies = KeptCopies::All);

// A new database: one list of categories, no fields, no records, caption "New Database".
void CreateNewDatabase(model::Document& doc, platform::Services& services);

// True for such a database until its first save, whatever name it has been given meanwhile.
bool isNewDatabase(const model::Document& doc);

// Builds and writes the file, whole or not at all, renews the temporary copy and the places of the pictures. The
// prefix of the older format in the target's name becomes "MS2_", its blanks become "_": see savedPath. Does not
// touch DocModified, the paths or the recent files. In the place of the document's own file the user is asked about
// changes as by saveDocument. With FileNames::AsGiven the user is told when a file of another name was written, and
// asked before when it was there already.
Outcome savePDBFile20(model::Document& doc, platform::Services& services, const std::filesystem::path& target,
                      FileNames names = FileNames::WithUnderscores);

// Why a new file may not have this name (UTF-8, prefix and ending included); empty when it may. Between the two stand
// 1 to 27 characters of the code page, not blanks alone, so that the header holds the same name.
std::string faultOfFileName(const std::string& name);

// True, with the message, when a save may not make a file of the target's name. The file that is open keeps its name,
// whatever it is.
bool refusesFileName(const model::Document& doc, platform::Services& services, const std::filesystem::path& target);

// Where savePDBFile20 puts a file for a target: the prefix of the older format becomes the present one's, blanks
// become
// "_"; with FileNames::AsGiven they stay where there is a file of that very name.
std::filesystem::path savedPath(const std::filesystem::path& target);
std::filesystem::path savedPath(platform::Files& files, const std::filesystem::path& target, FileNames names);

// The Save command: commits the open edit, refuses a read-only database, asks for a name when there is none yet. A
// database that was made read-only, or is not any more, since its file was read or written is saved once.
// Afterwards the document's paths name the file that was written. The caller updates the recent files.
//
// When somebody else has changed the file since it was read or written, or done away with it, the user is asked. From
// that look at the file until the new one has been read back, no other program of ours writes into its folder.
//
// With the folder of a handheld user the file goes there under its own name (CurrFileName, which Tallybook Properties
// change), wherever it was opened, so that the next sync and the Open dialog find it; when another file has the name
// there, the user is asked first.
Outcome saveDocument(model::Document& doc, platform::Services& services, const std::filesystem::path& userFolder = {},
                     FileNames names = FileNames::WithUnderscores);

// Asks for a name that starts with "MS2_" and saves under it. A new database that has a name already is offered
// under it, with its blanks, which go into the header. A file that lies there is asked about, unless the user has
// given it up already when the new database was named. On success names, paths and caption are the new ones;
// otherwise they are what they were.
Outcome SaveNew(model::Document& doc, platform::Services& services);

// Save As: SaveNew with its closing words.
Outcome saveAsSub(model::Document& doc, platform::Services& services);

// Before closing: commits the open edit and asks when there are unsaved changes. True when the document may be
// closed. The folder is that of saveDocument.
bool CheckSaveChanges(model::Document& doc, platform::Services& services,
                      const std::filesystem::path& userFolder = {});

} // namespace tallybook::document
