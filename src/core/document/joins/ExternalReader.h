// Reads fields of another database into the tables of joins.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/model/ExternalTables.h"
#include "core/pdb/Database.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::document {

// What was read of another database. Nothing stands in it when that failed, which has been said then.
struct ExternalDatabase {
    std::shared_ptr<const model::DatabaseModel> properties;
    std::shared_ptr<const model::ExternalRecords> records;

    explicit operator bool() const { return records != nullptr; }
};

// The fields that are wanted, once the properties are known.
using WantedFields = std::function<pdb::FieldSet(const model::DatabaseModel&)>;

// Reads a file that findExternalFile gave. Texts are those that its own grid would show when its joins are not
// resolved, but a Checkbox is "y" or "n", an Image "{image}", and an item that its list does not have is its number.
//
// A file without a readable header is asked about: it goes to the trash when the user wants that, and No is the
// default. A link is never asked about. Any other failure is shown in the error dialog. Shows progress.
ExternalDatabase readExternalDatabase(platform::Services& services, const std::filesystem::path& path,
                                      const WantedFields& wanted);

// Views of another database, fields, and what its list of views holds: its structure alone, without a word about a
// file that cannot be read.
std::optional<model::DatabaseModel> getExternalJoinProps(platform::Services& services,
                                                         const std::filesystem::path& path);

// The message about a missing file; a join's field is named, the picker names none.
void sayExternalMissing(platform::Services& services, std::string_view source,
                        std::optional<std::string_view> fieldName);

} // namespace tallybook::document
