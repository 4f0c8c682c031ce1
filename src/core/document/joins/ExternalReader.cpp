#include "core/document/joins/ExternalReader.h"

#include "core/document/grid/Cells.h"
#include "core/document/grid/Progress.h"
#include "core/document/joins/ExternalFiles.h"
#include "core/model/Document.h"
#include "core/pdb/Names.h"
#include "core/pdb/OlderDatabase.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <utility>

namespace tallybook::document {

namespace {

using model::ExternalRecords;
using model::FieldType;
using model::TextColumn;
using platform::Bytes;
using platform::Services;
using Path = std::filesystem::path;

constexpr std::string_view kTag = "getExternalJoinData20";
constexpr std::string_view kOlderTag = "getExternalJoinData";

bool isOlder(const Path& path) {
    return pdb::has1xPrefix(path.filename().string()) && !pdb::has2xPrefix(path.filename().string());
}

// The file of that name in the folder itself, not what a link leads to.
bool isNoLink(platform::Files& files, const Path& path) {
    const auto file = files.resolve(path);
    const auto folder = files.resolve(path.parent_path());
    return file && folder && file.value() == folder.value() / path.filename();
}

void askToDelete(Services& services, const Path& path) {
    const auto answer = services.ui.message(
        {.text = "The Tallybook " + platform::shownPath(path) + " is invalid.  Would you like to delete it?",
         .icon = platform::Icon::Question,
         .buttons = platform::Buttons::YesNo,
         .title = {},
         .preferred = platform::Answer::No});
    if (answer != platform::Answer::Yes)
        return;
    if (const platform::Status moved = services.files.moveToTrash(path); !moved)
        report(services, moved.error(), kTag);
}

// What a check box of the other database shows, which is a picture to its grid.
void showChecks(const model::WordColumn& pictures, std::uint32_t records, TextColumn& texts) {
    for (std::uint32_t record = 0; record < records; ++record) {
        const bool on = pictures.get(record) == static_cast<std::uint32_t>(model::Picture::CheckOn);
        texts.setText(record, on ? "y" : "n");
    }
}

void showImages(std::uint32_t records, TextColumn& texts) {
    for (std::uint32_t record = 0; record < records; ++record)
        if (texts.has(record))
            texts.setText(record, "{image}");
}

// An item that was taken off the list without a look at the records.
void showLostItems(const model::WordColumn& ids, std::uint32_t records, TextColumn& texts) {
    for (std::uint32_t record = 0; record < records; ++record)
        if (const std::uint32_t id = ids.get(record).value_or(0); id != 0 && !texts.has(record))
            texts.setText(record, std::to_string(id));
}

void showAsJoined(const model::Document& other, int slot, TextColumn& texts) {
    if (slot == 0)
        return; // the categories are on show already, "Unfiled" included
    const auto records = static_cast<std::uint32_t>(other.NumDataRecs);
    switch (other.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::Checkbox:
        return showChecks(other.grd.pictures(model::columnOfSlot(slot)), records, texts);
    case FieldType::Image:
        return showImages(records, texts);
    case FieldType::List:
    case FieldType::RadioButton:
        return showLostItems(other.CellLongs.slotColumn(slot), records, texts);
    default:
        return;
    }
}

std::shared_ptr<const ExternalRecords> takeRecords(model::Document& other, const pdb::FieldSet& wanted) {
    auto records = std::make_shared<ExternalRecords>();
    records->count = static_cast<std::uint32_t>(other.NumDataRecs);
    for (int slot = 0; slot <= model::MaxUserFields; ++slot) {
        if (!wanted[static_cast<std::size_t>(slot)])
            continue;
        TextColumn& texts = records->fields[static_cast<std::size_t>(slot)];
        texts = std::move(other.grd.column(model::columnOfSlot(slot)));
        showAsJoined(other, slot, texts);
    }
    return records;
}

platform::Status readBytes(model::Document& other, Services& services, const Path& path, const Bytes& bytes,
                           const pdb::ReadSteps& steps) {
    return isOlder(path)
               ? pdb::readOlderDatabase(other, bytes, services.regional, steps)
               : pdb::readDatabase(other, bytes, platform::shownPath(path.filename()), services.regional, steps);
}

platform::Result<ExternalDatabase> readRecords(Services& services, const Path& path, const Bytes& bytes,
                                               const WantedFields& wanted) {
    auto other = std::make_unique<model::Document>();
    ProgressBar bar(services.screen, {});
    pdb::ReadSteps steps;
    steps.onlyFields = wanted;
    steps.onRecord = [&](int record, int total) { bar.show("Reading external references...", record, total); };
    if (const auto read = readBytes(*other, services, path, bytes, steps); !read)
        return read.error();
    const pdb::FieldSet taken = wanted(other->CurrDB20);
    return ExternalDatabase{std::make_shared<const model::DatabaseModel>(std::move(other->CurrDB20)),
                            takeRecords(*other, taken)};
}

} // namespace

ExternalDatabase readExternalDatabase(Services& services, const Path& path, const WantedFields& wanted) {
    const bool older = isOlder(path);
    const std::string_view tag = older ? kOlderTag : kTag;
    const auto bytes = services.files.read(path);
    if (!bytes) {
        report(services, bytes.error(), tag);
        return {};
    }
    const auto count =
        pdb::countDataRecords(bytes.value(), older ? pdb::FileFormat::Older : pdb::FileFormat::Present);
    if (!count && isNoLink(services.files, path)) {
        askToDelete(services, path);
        return {};
    }
    auto database = !count ? platform::Result<ExternalDatabase>(count.error())
                           : readRecords(services, path, bytes.value(), wanted);
    if (database)
        return std::move(database).value();
    report(services, database.error(), tag);
    return {};
}

std::optional<model::DatabaseModel> getExternalJoinProps(Services& services, const Path& path) {
    const auto bytes = services.files.read(path);
    model::DatabaseModel properties;
    if (!bytes)
        return std::nullopt;
    const auto read = isOlder(path)
                          ? pdb::readOlderStructure(properties, bytes.value())
                          : pdb::readStructure(properties, bytes.value(), platform::shownPath(path.filename()));
    return read ? std::optional(std::move(properties)) : std::nullopt;
}

void sayExternalMissing(Services& services, std::string_view source, std::optional<std::string_view> fieldName) {
    std::string text = "Cannot find external database " + externalFileName(source) + ". External references ";
    if (fieldName)
        text += "for field " + platform::texts::quoted(*fieldName) + ' ';
    showCritical(services, text + "will not be displayed");
}

} // namespace tallybook::document
