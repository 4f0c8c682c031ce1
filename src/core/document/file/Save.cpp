// Writing the document to a file, under its own name or a new one.
#include "core/calc/values/Text.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/file/Copies.h"
#include "core/document/file/OpenSave.h"
#include "core/document/grid/Cells.h"
#include "core/document/grid/Progress.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/platform/Ansi.h"
#include "core/platform/Containment.h"
#include "core/platform/Guards.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <optional>

namespace tallybook::document {

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Services;
using Path = std::filesystem::path;

constexpr std::string_view kTag = "Tallybook Pocket : Save";
constexpr std::string_view kNewDatabase = "New Database";
constexpr std::size_t kLongestName = model::kNameLength - pdb::kPrefix2x.size(); // bytes; the header holds no more

// Unchanged pictures are copied from the new file from now on, so each cell takes its place there.
void adoptPictures(model::Document& doc, Services& services, const pdb::BuiltFile& built) {
    for (const pdb::ImagePlace& image : built.images) {
        const int row = image.record + model::kFirstDataRow;
        const int column = model::columnOfSlot(image.slot);
        doc.CellLongs.set(image.record, image.slot, image.position);
        doc.grd.setText(row, column, pdb::kPictureMark);
    }
    for (const Path& picture : built.usedPictures)
        (void)services.files.remove(picture); // one that stays behind harms nobody
}

platform::Result<pdb::BuiltFile> build(model::Document& doc, Services& services, ProgressBar& bar) {
    pdb::BuildSteps steps;
    steps.onBuild = [&](int record, int total) { bar.step(record + 1, total, total); };
    return pdb::buildDatabase(doc, services, steps);
}

bool exists(Services& services, const Path& path) {
    const auto state = services.files.state(path);
    return state && state.value().kind != platform::FileKind::Missing;
}

// The save dialogs of some desktops leave the ending to the program.
Path withEnding(const Path& path) {
    if (calc::equalText(path.extension().string(), pdb::kExtension, calc::TextCase::Folded))
        return path;
    Path ended = path;
    ended += pdb::kExtension;
    return ended;
}

bool hasForbiddenCharacter(std::string_view name) {
    constexpr std::string_view kForbidden = "\\/:*?\"<>|";
    for (const char c : name)
        if (static_cast<unsigned char>(c) < ' ' || kForbidden.find(c) != std::string_view::npos)
            return true;
    return false;
}

// The name itself, without prefix and ending.
std::string behindPrefix(const std::string& name) {
    std::string behind = name.substr(pdb::kPrefix2x.size());
    if (calc::equalText(Path(name).extension().string(), pdb::kExtension, calc::TextCase::Folded))
        behind.resize(behind.size() - pdb::kExtension.size());
    return behind;
}

// True when no file is there, or the user lets it go.
bool mayTakePlace(Services& services, const Path& place) {
    if (!exists(services, place))
        return true;
    return services.ui.message({.text = platform::texts::replaceFile(platform::shownPath(place)),
                                .icon = Icon::Warning,
                                .buttons = Buttons::YesNo,
                                .title = {},
                                .preferred = Answer::No}) == Answer::Yes;
}

// A new database may have been given this very place, and what lies there have been given up.
bool mayReplace(const model::Document& doc, Services& services, const Path& path) {
    const Path onDisk = savedPath(path);
    const bool given = isNewDatabase(doc) && onDisk == doc.CurrFilePath && doc.fileMark.known &&
                       doc.fileMark == markOf(services.files, onDisk);
    return given || mayTakePlace(services, onDisk);
}

// The name with its blanks: the header takes it from the file, and underscores would stay in it.
Path suggestedPath(const model::Document& doc) {
    if (!isNewDatabase(doc))
        return doc.CurrFilePath;
    const bool named = doc.CurrFileName.starts_with(pdb::kPrefix2x);
    return doc.CurrFolder / (named ? platform::ansi::toUtf8(doc.CurrFileName) : "MS2_New.pdb");
}

std::optional<Path> askNewName(model::Document& doc, Services& services) {
    const Path suggestion = suggestedPath(doc);
    for (;;) {
        const auto chosen = services.ui.askSaveName("Save As Tallybook", "PDB file (*.pdb)|*.pdb", suggestion);
        if (!chosen)
            return std::nullopt;
        const Path path = withEnding(*chosen);
        const std::string fault = faultOfFileName(path.filename().string());
        if (fault.empty()) {
            if (mayReplace(doc, services, path))
                return path;
            continue;
        }
        const Answer answer =
            services.ui.message({.text = fault, .icon = Icon::Critical, .buttons = Buttons::OkCancel, .title = {}});
        if (answer != Answer::Ok)
            return std::nullopt;
    }
}

// As on the disk, or as it was named since in Tallybook Properties.
Path currentName(const model::Document& doc) {
    const Path onDisk = doc.CurrFilePath.filename();
    const bool renamed = !doc.CurrFileName.empty() && doc.CurrFileName != platform::shownPath(onDisk);
    return renamed ? savedPath(platform::ansi::toUtf8(doc.CurrFileName)) : onDisk;
}

// Where Save puts the file: into the user's folder when there is one. A file that lies there already, under whatever
// path, is the one that is open.
Path targetIn(const Path& userFolder, const model::Document& doc, Services& services) {
    if (userFolder.empty())
        return doc.CurrFilePath;
    const Path place = platform::findIgnoringCase(services.files, userFolder / currentName(doc));
    return platform::isSamePlace(services.files, place, doc.CurrFilePath) ? doc.CurrFilePath : place;
}

void adoptPath(model::Document& doc, Services& services, const Path& path) {
    doc.Is2xFormat = true; // whatever was read, this is what a save writes
    doc.CurrFilePath = path;
    doc.CurrFolder = path.parent_path();
    doc.CurrFileName = platform::shownPath(path.filename());
    doc.fileMark = markOf(services.files, path);
}

// A sync may have brought newer records from the handheld into the very file.
bool mayOverwrite(const model::Document& doc, Services& services) {
    const model::FileMark now = markOf(services.files, doc.CurrFilePath);
    if (!doc.fileMark.known || !now.known || now == doc.fileMark)
        return true;
    return services.ui.message({.text = platform::texts::changedMeanwhile(platform::shownPath(doc.CurrFilePath)),
                                .icon = Icon::Warning,
                                .buttons = Buttons::YesNo,
                                .title = {},
                                .preferred = Answer::No}) == Answer::Yes;
}

void say(Services& services, std::string_view text) {
    services.ui.message({.text = std::string(text), .icon = Icon::Information, .title = {}});
}

} // namespace

std::string faultOfFileName(const std::string& name) {
    if (!name.starts_with(pdb::kPrefix2x))
        return "Filename not valid.  Tallybook file name must start with \"MS2_\".";
    if (hasForbiddenCharacter(name))
        return std::string(platform::texts::kNameForbidden);
    const std::string behind = behindPrefix(name);
    if (behind.find_first_not_of(' ') == std::string::npos)
        return std::string(platform::texts::kNameMissing);
    if (const std::string foreign = platform::ansi::foreignCharacter(behind); !foreign.empty())
        return platform::texts::nameForeign(foreign);
    return platform::ansi::fromUtf8(behind).size() > kLongestName ? std::string(platform::texts::kNameTooLong)
                                                                  : std::string();
}

bool refusesFileName(const model::Document& doc, Services& services, const Path& target) {
    if (platform::isSamePlace(services.files, savedPath(target), doc.CurrFilePath))
        return false;
    const std::string fault = faultOfFileName(pdb::presentName(target.filename().string()));
    if (!fault.empty())
        services.ui.message({.text = fault, .icon = Icon::Critical, .title = {}});
    return !fault.empty();
}

bool isNewDatabase(const model::Document& doc) {
    return doc.Caption.starts_with(kNewDatabase);
}

Path savedPath(const Path& target) {
    return target.parent_path() / pdb::addUnderscore20(pdb::presentName(target.filename().string()));
}

Outcome savePDBFile20(model::Document& doc, Services& services, const Path& target) {
    const platform::HourGlass wait(services.screen);
    const platform::Freeze freeze(services.screen, doc);
    ProgressBar bar(services.screen, "Building record ");
    const Path path = savedPath(target);
    doc.FileOK = false;
    if (doc.CurrDB20.DBName.empty())
        doc.CurrDB20.DBName = platform::shownPath(path.stem());
    const auto built = build(doc, services, bar);
    if (!built) {
        report(services, built.error(), kTag);
        return Outcome::Refused;
    }
    bar.setVerb("Saving record ");
    bar.step(doc.NumDataRecs, doc.NumDataRecs, doc.NumDataRecs);
    const platform::Bytes& bytes = built.value().bytes;
    if (const platform::Status written = platform::writeWholeFile(services.files, path, bytes); !written) {
        report(services, written.error(), kTag);
        return Outcome::Refused;
    }
    adoptPictures(doc, services, built.value());
    renewTempCopy(doc, services, path, bytes);
    doc.ReadOnlyInFile = doc.CurrDB20.ReadOnly != 0;
    doc.FileOK = true;
    return Outcome::Done;
}

Outcome saveDocument(model::Document& doc, Services& services, const Path& userFolder) {
    if (doc.ReadOnlyInFile && refuseReadOnly(doc, services))
        return Outcome::Refused;
    saveCell(doc, services);
    if (isNewDatabase(doc))
        return SaveNew(doc, services);
    const Path target = targetIn(userFolder, doc, services);
    const Path path = savedPath(target);
    const bool mayWrite = path == doc.CurrFilePath ? mayOverwrite(doc, services) : mayTakePlace(services, path);
    if (!mayWrite)
        return Outcome::Refused;
    const Outcome outcome = savePDBFile20(doc, services, target);
    if (outcome != Outcome::Done) {
        if (path == doc.CurrFilePath)
            doc.fileMark = {}; // what stands there now may be our own
        return outcome;
    }
    doc.DocModified = false;
    const bool renamed = path.filename() != doc.CurrFilePath.filename();
    adoptPath(doc, services, path);
    if (renamed)
        doc.Caption = doc.CurrFileName;
    return outcome;
}

Outcome SaveNew(model::Document& doc, Services& services) {
    const auto path = askNewName(doc, services);
    if (!path)
        return Outcome::Cancelled;
    const std::string nameBefore = doc.CurrDB20.DBName;
    doc.CurrDB20.DBName = platform::shownPath(path->stem());
    const Outcome outcome = savePDBFile20(doc, services, *path);
    if (outcome != Outcome::Done) {
        doc.CurrDB20.DBName = nameBefore;
        return outcome;
    }
    doc.Caption = doc.CurrDB20.DBName;
    adoptPath(doc, services, savedPath(*path));
    doc.DocModified = false;
    return outcome;
}

Outcome saveAsSub(model::Document& doc, Services& services) {
    saveCell(doc, services);
    const Outcome outcome = SaveNew(doc, services);
    if (outcome == Outcome::Done) {
        say(services, "A backup copy of the Tallybook has been created successfully.");
        say(services, "Note: If you want to install this Tallybook on the device please select the button "
                      "'Save & Install' on the toolbar.");
    }
    return outcome;
}

bool CheckSaveChanges(model::Document& doc, Services& services, const Path& userFolder) {
    saveCell(doc, services);
    if (!doc.DocModified)
        return true;
    const Answer answer =
        services.ui.message({.text = "Do you want to save the changes you made to " + doc.Caption + " ?",
                             .icon = Icon::Question,
                             .buttons = Buttons::YesNoCancel,
                             .title = {}});
    if (answer == Answer::Yes)
        return saveDocument(doc, services, userFolder) == Outcome::Done;
    return answer == Answer::No;
}

} // namespace tallybook::document
