// Reading a file into the document.
#include "core/document/Cells.h"
#include "core/document/Copies.h"
#include "core/document/GridDisplay.h"
#include "core/document/Joins.h"
#include "core/document/OpenSave.h"
#include "core/document/Progress.h"
#include "core/document/Recalculate.h"
#include "core/document/Views.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/pdb/Passwords.h"
#include "core/platform/Guards.h"
#include "core/platform/Paths.h"

#include <optional>

namespace tallybook::document {

namespace {

using platform::Bytes;
using platform::Services;
using Path = std::filesystem::path;

constexpr std::string_view kTag = "Tallybook Pocket : Open";

// The name with "_" for blanks, as the program writes it, or else the name as given: other programs keep blanks.
Path existingPath(platform::Files& files, const Path& path) {
    const Path onDisk = path.parent_path() / pdb::addUnderscore20(path.filename().string());
    const auto state = files.state(onDisk);
    return state && state.value().kind != platform::FileKind::Missing ? onDisk : path;
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

bool verifyPDB(Services& services, const Path& path, platform::ByteSpan bytes) {
    const auto verdict = pdb::verifyRecords(bytes);
    if (!verdict) {
        report(services, verdict.error(), kTag);
        return false;
    }
    if (verdict.value() == pdb::Verdict::WrongCreator)
        showCritical(services, "The selected file " + platform::shownPath(path.filename()) + " is not a Tallybook");
    else if (verdict.value() == pdb::Verdict::OutOfOrder)
        sayOutOfOrder(services, path);
    return verdict.value() == pdb::Verdict::Good;
}

void nameDocument(model::Document& doc, const Path& path) {
    doc.CurrFilePath = path;
    doc.CurrFolder = path.parent_path();
    doc.CurrFileName = platform::shownPath(path.filename());
    doc.Caption = doc.CurrFileName;
}

platform::Status parse(model::Document& doc, Services& services, platform::ByteSpan bytes) {
    ProgressBar bar(services.ui, "Reading record ");
    bar.show("Opening...", 0, 1);
    pdb::ReadSteps steps;
    steps.afterHeaderValues = [&](model::Document& opened) {
        return pdb::AuthorizeDB(opened, services, model::PasswordKind::Login);
    };
    steps.afterFieldTable = [&](model::Document& opened) { gridLoadFieldNames20(opened, services.regional); };
    steps.onRecord = [&](int record, int total) { bar.step(record + 1, total, total + 1); };
    return pdb::readDatabase(doc, bytes, doc.CurrFileName, services.regional, steps);
}

void finish(model::Document& doc, Services& services, ReadMode mode) {
    loadExternalData(doc, services);
    recalcExpressions(doc, services);
    if (mode == ReadMode::Show) {
        doc.grd.setCell(model::kFirstDataRow, 1);
        AddViewFilterInfo(doc, services);
    }
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
    Bytes bytes{};
};

Opened readInto(model::Document& doc, Services& services, const Path& path, ReadMode mode) {
    const platform::HourGlass wait(services.ui);
    forget(doc);
    const model::FileMark mark = markOf(services.files, path);
    auto bytes = readWhole(services, path);
    if (!bytes || !verifyPDB(services, path, *bytes))
        return {};
    nameDocument(doc, path);
    doc.fileMark = mark;
    if (const platform::Status parsed = parse(doc, services, *bytes); !parsed) {
        forget(doc);
        if (parsed.error().kind == platform::ErrorKind::Refused)
            return {.outcome = Outcome::Cancelled};
        report(services, parsed.error(), kTag);
        return {};
    }
    finish(doc, services, mode);
    renewTempCopy(doc, services, path, *bytes);
    return {.outcome = Outcome::Done, .bytes = std::move(*bytes)};
}

} // namespace

Outcome readPDBFile20(model::Document& doc, Services& services, const Path& path, ReadMode mode) {
    return readInto(doc, services, existingPath(services.files, path), mode).outcome;
}

Outcome OpenDatabase(model::Document& doc, Services& services, const Path& path) {
    if (!pdb::has2xPrefix(path.filename().string())) {
        services.ui.message({.text = "Old Format", .icon = platform::Icon::Information, .title = {}});
        return Outcome::Refused;
    }
    const Opened opened = readInto(doc, services, existingPath(services.files, path), ReadMode::Show);
    if (opened.outcome != Outcome::Done)
        return opened.outcome;
    if (const platform::Status kept = refreshBackup(services, doc.CurrFilePath, opened.bytes); !kept)
        report(services, kept.error(), kTag); // the file itself is open all the same
    return Outcome::Done;
}

} // namespace tallybook::document
