// Reading a file into the document.
#include "core/document/file/Copies.h"
#include "core/document/file/OpenSave.h"
#include "core/document/grid/Cells.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/grid/Progress.h"
#include "core/document/grid/Recalculate.h"
#include "core/document/joins/Joins.h"
#include "core/document/views/Views.h"
#include "core/pdb/AttributeBlocks.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/pdb/OlderDatabase.h"
#include "core/pdb/Passwords.h"
#include "core/platform/Guards.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <new>
#include <optional>

namespace tallybook::document {

namespace {

using platform::Bytes;
using platform::Services;
using Path = std::filesystem::path;

constexpr std::string_view kTag = "Tallybook Pocket : Open";

// The name with "_" for blanks, as the program writes it, or the name as given: other programs keep blanks.
Path existingPath(platform::Files& files, const Path& path, FileNames names) {
    const auto isThere = [&](const Path& candidate) {
        const auto state = files.state(candidate);
        return state && state.value().kind != platform::FileKind::Missing;
    };
    const Path onDisk = path.parent_path() / pdb::addUnderscore20(path.filename().string());
    if (names == FileNames::AsGiven && isThere(path))
        return path;
    return isThere(onDisk) ? onDisk : path;
}

std::optional<Bytes> readWhole(Services& services, const Path& path) {
    const auto state = services.files.state(path);
    if (state && state.value().kind == platform::FileKind::Missing) {
        showCritical(services, "Error opening file " + platform::shownPath(path));
        return std::nullopt;
    }
    auto bytes = services.files.read(path);
    if (!bytes) {
        report(services, bytes.error(), kTag);
        return std::nullopt;
    }
    return std::move(bytes).value();
}

void sayOutOfOrder(Services& services, const Path& path) {
    services.ui.message({.text = "The Tallybook \"" + platform::shownPath(path) +
                                 "\" was modified by the Tallybook Pocket conduit.  It is not possible to open it "
                                 "using Tallybook Pocket Desktop at this moment.   Perform another HotSync and try "
                                 "again.",
                         .icon = platform::Icon::Critical,
                         .buttons = platform::Buttons::OkCancel,
                         .title = {}});
}

void sayNoTallybook(Services& services, const Path& path) {
    showCritical(services, "The selected file " + platform::shownPath(path.filename()) + " is not a Tallybook");
}

bool verifyPDB(Services& services, const Path& path, platform::ByteSpan bytes) {
    const auto verdict = pdb::verifyRecords(bytes);
    if (!verdict) {
        report(services, verdict.error(), kTag);
        return false;
    }
    if (verdict.value() == pdb::Verdict::WrongCreator)
        sayNoTallybook(services, path);
    else if (verdict.value() == pdb::Verdict::OutOfOrder)
        sayOutOfOrder(services, path);
    return verdict.value() == pdb::Verdict::Good;
}

void sayFormat099(Services& services) {
    services.ui.message(
        {.text =
             "This Tallybook is saved in Tallybook Pocket 0.99 format.\n\n"
             "If you choose to save the database, Tallybook Pocket will automatically convert it to the Tallybook "
             "Pocket 1.0 format.\n\n"
             "Make sure you have Tallybook Pocket for Palm 1.0 or greater, older versions cannot open databases "
             "in the Tallybook Pocket 1.0 format.",
         .icon = platform::Icon::Warning,
         .title = {}});
}

void nameDocument(model::Document& doc, const Path& path) {
    doc.CurrFilePath = path;
    doc.CurrFolder = path.parent_path();
    doc.CurrFileName = platform::shownPath(path.filename());
    doc.Caption = doc.CurrFileName;
}

platform::Status parse(model::Document& doc, Services& services, platform::ByteSpan bytes) {
    ProgressBar bar(services.screen, "Reading record ");
    bar.show("Opening...", 0, 1);
    pdb::ReadSteps steps;
    steps.onFormat099 = [&] { sayFormat099(services); };
    steps.afterHeaderValues = [&](model::Document& opened) {
        return pdb::AuthorizeDB(opened, services, model::PasswordKind::Login);
    };
    steps.afterFieldTable = [&](model::Document& opened) { gridLoadFieldNames20(opened, services.regional); };
    steps.onRecord = [&](int record, int total) { bar.step(record + 1, total, total + 1); };
    return doc.Is2xFormat ? pdb::readDatabase(doc, bytes, doc.CurrFileName, services.regional, steps)
                          : pdb::readOlderDatabase(doc, bytes, services.regional, steps);
}

// The results of the older rules stay in the cells; from now on the expressions are those of the present format.
void calculateOlder(model::Document& doc, Services& services) {
    calcOlderExpressions(doc, services);
    for (int slot = 0; slot <= model::MaxUserFields; ++slot)
        if (doc.CurrDB20.Expressions.has(slot))
            pdb::renewOperators(doc.CurrDB20.Expressions[slot]);
}

void finish(model::Document& doc, Services& services, ReadMode mode) {
    loadExternalData(doc, services);
    if (doc.Is2xFormat)
        recalcExpressions(doc, services);
    else
        calculateOlder(doc, services);
    if (mode == ReadMode::Show) {
        doc.grd.setCell(model::kFirstDataRow, 1);
        AddViewFilterInfo(doc, services);
    }
    doc.ReadOnlyInFile = doc.CurrDB20.ReadOnly != 0;
    doc.DocModified = false;
    doc.FileOK = true;
    doc.GridReady = true;
}

void forget(model::Document& doc) {
    model::clearDocument(doc);
    doc.CurrFilePath.clear();
    doc.fileMark = {};
    doc.CurrFolder.clear();
    doc.TempCopyPath.clear();
    doc.CurrFileName.clear();
    doc.Caption.clear();
}

// How it went, and the bytes of a document that is open.
struct Opened {
    Outcome outcome = Outcome::Refused;
    bool isUnreadable = false; // refused for its bytes, and nothing has been said yet
    Bytes bytes{};
};

// The rest of a read, once the bytes are those of a Tallybook.
Opened readBytes(model::Document& doc, Services& services, ReadMode mode, Bytes bytes) {
    const platform::Status parsed = parse(doc, services, bytes);
    if (parsed) {
        finish(doc, services, mode);
        return {.outcome = Outcome::Done, .bytes = std::move(bytes)};
    }
    const bool is2x = doc.Is2xFormat;
    forget(doc);
    if (parsed.error().kind == platform::ErrorKind::Refused)
        return {.outcome = Outcome::Cancelled};
    if (is2x)
        report(services, parsed.error(), kTag);
    return {.isUnreadable = !is2x};
}

Opened readInto(model::Document& doc, Services& services, const Path& path, ReadMode mode, KeptCopies copies) {
    const platform::HourGlass wait(services.screen);
    forget(doc);
    const auto mark = markOf(services.files, path); // ahead of the bytes: a change in between is noticed
    auto bytes = readWhole(services, path);
    if (!bytes || !verifyPDB(services, path, *bytes))
        return {};
    nameDocument(doc, path);
    doc.fileMark = mark ? mark.value() : model::FileMark{};
    Opened opened = readBytes(doc, services, mode, std::move(*bytes));
    if (opened.outcome == Outcome::Done && copies == KeptCopies::None)
        doc.TempCopyPath = path;
    else if (opened.outcome == Outcome::Done)
        renewTempCopy(doc, services, path, opened.bytes);
    return opened;
}

// Older files have no pictures that a temporary copy would be needed for.
Opened readOlderInto(model::Document& doc, Services& services, const Path& path, ReadMode mode) {
    const platform::HourGlass wait(services.screen);
    forget(doc);
    const auto mark = markOf(services.files, path); // ahead of the bytes: a change in between is noticed
    auto bytes = readWhole(services, path);
    if (!bytes)
        return {};
    const auto verdict = pdb::verifyOlder(*bytes);
    if (!verdict)
        return {.isUnreadable = true};
    if (verdict.value() == pdb::Verdict::WrongCreator) {
        sayNoTallybook(services, path);
        return {};
    }
    doc.Is2xFormat = false;
    nameDocument(doc, path);
    doc.fileMark = mark ? mark.value() : model::FileMark{};
    return readBytes(doc, services, mode, std::move(*bytes));
}

Opened openOlder(model::Document& doc, Services& services, const Path& path, ReadMode mode, FileNames names) {
    Opened opened = readOlderInto(doc, services, existingPath(services.files, path, names), mode);
    if (opened.isUnreadable)
        showCritical(services, kLoadFailed);
    return opened;
}

// The user's word for a file that a conversion would replace.
bool mayConvertOnto(Services& services, const Path& target) {
    const auto state = services.files.state(target);
    if (state && state.value().kind == platform::FileKind::Missing)
        return true;
    return services.ui.message({.text = "File already exist, do you want to overwrite it?",
                                .icon = platform::Icon::Question,
                                .buttons = platform::Buttons::YesNo,
                                .title = {},
                                .preferred = platform::Answer::No}) == platform::Answer::Yes;
}

} // namespace

Outcome readPDBFile20(model::Document& doc, Services& services, const Path& path, ReadMode mode) {
    return readInto(doc, services, existingPath(services.files, path, FileNames::WithUnderscores), mode,
                    KeptCopies::All)
        .outcome;
}

Outcome readPDBFile(model::Document& doc, Services& services, const Path& path, ReadMode mode) {
    return openOlder(doc, services, path, mode, FileNames::WithUnderscores).outcome;
}

namespace {

Opened openEither(model::Document& doc, Services& services, const Path& path, FileNames names, KeptCopies copies) {
    if (pdb::has2xPrefix(path.filename().string()))
        return readInto(doc, services, existingPath(services.files, path, names), ReadMode::Show, copies);
    services.ui.message({.text = "Old Format", .icon = platform::Icon::Information, .title = {}});
    return openOlder(doc, services, path, ReadMode::Show, names);
}

void tellOfOtherName(Services& services, const Path& given, const Path& opened, FileNames names) {
    if (names == FileNames::AsGiven && given.filename() != opened.filename())
        services.ui.note(platform::texts::openedInstead(platform::shownPath(opened), platform::shownPath(given)));
}

} // namespace

Outcome OpenDatabase(model::Document& doc, Services& services, const Path& path, FileNames names, KeptCopies copies) {
    try {
        const Opened opened = openEither(doc, services, path, names, copies);
        if (opened.outcome != Outcome::Done)
            return opened.outcome;
        tellOfOtherName(services, path, doc.CurrFilePath, names);
        if (copies != KeptCopies::All)
            return Outcome::Done;
        if (const platform::Status kept = refreshBackup(services, doc.CurrFilePath, opened.bytes); !kept)
            report(services, kept.error(), kTag); // the file itself is open all the same
        return Outcome::Done;
    } catch (const std::bad_alloc&) {
        forget(doc); // which makes room for what is said
        report(services, noMemory(path), kTag);
        return Outcome::Refused;
    }
}

Outcome convertOlder(Services& services, const Path& from, const Path& to, std::string_view failure,
                     FileNames names) {
    const Path target = savedPath(services.files, to, names);
    if (!mayConvertOnto(services, target))
        return Outcome::Cancelled;
    model::Document doc;
    const Opened read = readOlderInto(doc, services, existingPath(services.files, from, names), ReadMode::Quiet);
    if (read.outcome != Outcome::Done) {
        showCritical(services, failure);
        return Outcome::Refused;
    }
    tellOfOtherName(services, from, doc.CurrFilePath, names);
    const Outcome saved = savePDBFile20(doc, services, target, names);
    if (saved == Outcome::Done && names == FileNames::AsGiven && target.filename() != to.filename())
        services.ui.note(platform::texts::savedInstead(platform::shownPath(target)));
    return saved;
}

} // namespace tallybook::document
