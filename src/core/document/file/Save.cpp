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

#include <memory>
#include <new>
#include <optional>

namespace tallybook::document {

namespace {

using model::FileMark;
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
    const auto now = markOf(services.files, onDisk);
    const bool given =
        isNewDatabase(doc) && onDisk == doc.CurrFilePath && doc.fileMark.known && now && doc.fileMark == now.value();
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

void adoptPath(model::Document& doc, const Path& path, const FileMark& mark) {
    doc.Is2xFormat = true; // whatever was read, this is what a save writes
    doc.CurrFilePath = path;
    doc.CurrFolder = path.parent_path();
    doc.CurrFileName = platform::shownPath(path.filename());
    doc.fileMark = mark;
}

// A sync may have brought newer records from the handheld into the very file, or somebody may have done away with it.
bool mayOverwrite(const model::Document& doc, Services& services, const FileMark& now) {
    if (!doc.fileMark.known || now == doc.fileMark)
        return true;
    const std::string path = platform::shownPath(doc.CurrFilePath);
    return services.ui.message(
               {.text = now.known ? platform::texts::changedMeanwhile(path) : platform::texts::goneMeanwhile(path),
                .icon = Icon::Warning,
                .buttons = Buttons::YesNo,
                .title = {},
                .preferred = Answer::No}) == Answer::Yes;
}

// What stands at the place of a save now, once the user lets it go; nothing when it stays or cannot be looked at.
std::optional<FileMark> agreedTarget(const model::Document& doc, Services& services, const Path& path) {
    const auto now = markOf(services.files, path);
    if (!now) {
        report(services, now.error(), kTag);
        return std::nullopt;
    }
    const bool own = platform::isSamePlace(services.files, path, doc.CurrFilePath);
    const bool may = own ? mayOverwrite(doc, services, now.value()) : mayTakePlace(services, path);
    return may ? std::optional(now.value()) : std::nullopt;
}

// The folder that a file really lies in, kept from other programs of ours. What killed ones left there goes first, as
// it may be what fills the disk.
platform::Result<std::unique_ptr<platform::FolderLock>> holdFolderOf(platform::Files& files, const Path& path) {
    const auto place = files.resolve(path);
    if (!place)
        return place.error();
    const Path folder = place.value().parent_path();
    files.sweepLeftOvers(folder);
    return files.lockFolder(folder);
}

struct Written {
    platform::Status status{};
    bool overtaken = false; // somebody changed the file since the user was asked about it; it was left alone
    FileMark mark{};        // of what stands there now
};

// Puts the bytes in the place of what the user let go, and of nothing else: from the look at the file until it has
// been read back no other program of ours writes there. Without `agreed` they go in the place of anything. After a
// failure there is what was there before, or the new file, which the disk did not confirm.
Written putInPlace(Services& services, const Path& path, platform::ByteSpan bytes,
                   const std::optional<FileMark>& agreed) {
    const auto held = holdFolderOf(services.files, path);
    if (!held)
        return {.status = held.error()};
    const auto before = markOf(services.files, path);
    if (!before)
        return {.status = before.error()};
    if (agreed && before.value() != *agreed)
        return {.overtaken = true, .mark = before.value()};
    const auto written = platform::replaceWholeFile(services.files, path, bytes);
    if (written)
        return {.mark = markOf(written.value())};
    const auto now = markOf(services.files, path);
    return {.status = written.error(), .mark = now ? now.value() : FileMark{}};
}

struct Saved {
    Outcome outcome = Outcome::Refused;
    bool overtaken = false; // as of Written
    FileMark mark{};
};

// Builds and writes the file, renews the temporary copy and the places of the pictures.
Saved saveNow(model::Document& doc, Services& services, const Path& path, const std::optional<FileMark>& agreed) {
    const platform::HourGlass wait(services.screen);
    const platform::Freeze freeze(services.screen, doc);
    ProgressBar bar(services.screen, "Building record ");
    doc.FileOK = false;
    if (doc.CurrDB20.DBName.empty())
        doc.CurrDB20.DBName = platform::shownPath(path.stem());
    const auto built = build(doc, services, bar);
    if (!built) {
        report(services, built.error(), kTag);
        return {.mark = agreed.value_or(FileMark{})};
    }
    bar.setVerb("Saving record ");
    bar.step(doc.NumDataRecs, doc.NumDataRecs, doc.NumDataRecs);
    const platform::Bytes& bytes = built.value().bytes;
    const Written written = putInPlace(services, path, bytes, agreed);
    if (written.overtaken)
        return {.overtaken = true};
    if (!written.status) {
        report(services, written.status.error(), kTag);
        return {.mark = written.mark};
    }
    adoptPictures(doc, services, built.value());
    renewTempCopy(doc, services, path, bytes);
    doc.ReadOnlyInFile = doc.CurrDB20.ReadOnly != 0;
    doc.FileOK = true;
    return {.outcome = Outcome::Done, .mark = written.mark};
}

Saved save(model::Document& doc, Services& services, const Path& path, const std::optional<FileMark>& agreed) {
    try {
        return saveNow(doc, services, path, agreed);
    } catch (const std::bad_alloc&) { // the file is what it was, and the document too
        report(services, noMemory(path), kTag);
        return {.mark = agreed.value_or(FileMark{})};
    }
}

// Saves in the place of what the user let go; whoever else was quicker is asked about again.
Saved saveAgreed(model::Document& doc, Services& services, const Path& path, std::optional<FileMark> agreed) {
    const bool own = platform::isSamePlace(services.files, path, doc.CurrFilePath);
    doc.FileOK = false;
    while (agreed) {
        const Saved saved = save(doc, services, path, agreed);
        if (saved.overtaken) {
            agreed = agreedTarget(doc, services, path);
            continue;
        }
        if (own)
            doc.fileMark = saved.mark;
        return saved;
    }
    return {};
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

Path savedPath(platform::Files& files, const Path& target, FileNames names) {
    if (names == FileNames::WithUnderscores)
        return savedPath(target);
    const Path present = target.parent_path() / pdb::presentName(target.filename().string());
    const auto state = files.state(present);
    const bool isThere = state && state.value().kind != platform::FileKind::Missing;
    return isThere ? present : savedPath(target);
}

// What was not named is never replaced unasked.
Outcome savePDBFile20(model::Document& doc, Services& services, const Path& target, FileNames names) {
    const Path path = savedPath(services.files, target, names);
    const bool own = !doc.CurrFilePath.empty() && platform::isSamePlace(services.files, path, doc.CurrFilePath);
    const bool named = names == FileNames::WithUnderscores || path.filename() == target.filename();
    const Saved saved = own || !named ? saveAgreed(doc, services, path, agreedTarget(doc, services, path))
                                      : save(doc, services, path, std::nullopt);
    if (saved.outcome == Outcome::Done && !named)
        services.ui.note(platform::texts::savedInstead(platform::shownPath(path)));
    return saved.outcome;
}

Outcome saveDocument(model::Document& doc, Services& services, const Path& userFolder, FileNames names) {
    if (doc.ReadOnlyInFile && refuseReadOnly(doc, services))
        return Outcome::Refused;
    saveCell(doc, services);
    if (isNewDatabase(doc))
        return SaveNew(doc, services);
    const Path target = targetIn(userFolder, doc, services);
    const Path path = savedPath(services.files, target, names);
    const Saved saved = saveAgreed(doc, services, path, agreedTarget(doc, services, path));
    if (saved.outcome != Outcome::Done)
        return saved.outcome;
    doc.DocModified = false;
    const bool renamed = path.filename() != doc.CurrFilePath.filename();
    adoptPath(doc, path, saved.mark);
    if (renamed)
        doc.Caption = doc.CurrFileName;
    if (renamed && names == FileNames::AsGiven)
        services.ui.note(platform::texts::savedInstead(platform::shownPath(path)));
    return saved.outcome;
}

Outcome SaveNew(model::Document& doc, Services& services) {
    const auto chosen = askNewName(doc, services);
    if (!chosen)
        return Outcome::Cancelled;
    const Path path = savedPath(*chosen);
    const auto there = markOf(services.files, path); // which the user has been asked about
    if (!there) {
        report(services, there.error(), kTag);
        return Outcome::Refused;
    }
    const std::string nameBefore = doc.CurrDB20.DBName;
    doc.CurrDB20.DBName = platform::shownPath(chosen->stem());
    const Saved saved = saveAgreed(doc, services, path, there.value());
    if (saved.outcome != Outcome::Done) {
        doc.CurrDB20.DBName = nameBefore;
        return saved.outcome;
    }
    doc.Caption = doc.CurrDB20.DBName;
    adoptPath(doc, path, saved.mark);
    doc.DocModified = false;
    return saved.outcome;
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
