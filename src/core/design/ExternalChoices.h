// What the panels of joins and lookups offer: the other databases of the folder, and views and fields of one of them.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

// An entry of a list that stands for a number in the file.
struct NumberedEntry {
    std::uint8_t number = 0;
    std::string text;
    bool operator==(const NumberedEntry&) const = default;
};

// The names of the databases beside the open one, without ".pdb", by name. None for a database
// that has no folder yet.
std::vector<std::string> otherTallybooks(const model::Document& doc, platform::Services& services);

// The structure of the database that a name stands for; nothing when the folder has none that can be read. The name
// may lack its prefix and have ".pdb" at its end. Only files of the folder are looked at, whatever the name holds.
std::unique_ptr<model::DatabaseModel> readOtherTallybook(const model::Document& doc, platform::Services& services,
                                                         std::string_view source);

// Views and fields of another database. Without its structure they are numbers alone, so that what is stored can be
// seen and kept.
std::vector<NumberedEntry> otherViews(const model::DatabaseModel* other);
std::vector<NumberedEntry> otherFields(const model::DatabaseModel* other);
// Fields that can be the key of a join.
std::vector<NumberedEntry> otherKeyFields(const model::DatabaseModel* other);
// The type code of a key field; nothing when the structure is not known or its field is no key.
std::optional<std::uint8_t> keyTypeOf(const model::DatabaseModel* other, int field);

// The joins of a database, for a lookup to follow.
std::vector<NumberedEntry> joinsOf(const model::DatabaseModel& db);

// Position of a number, which is added at the end when no entry has it: what a file holds is not lost by looking at
// it. -1 for no number.
int positionOfNumber(std::vector<NumberedEntry>& entries, std::optional<std::uint8_t> number);

} // namespace tallybook::design
