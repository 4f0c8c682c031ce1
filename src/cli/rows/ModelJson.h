// The parts of a database as JSON, for info and dump. Members have the names of the model in camel case; texts
// are UTF-8.
#pragma once

#include "core/model/DatabaseModel.h"

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>

namespace tallybook::cli {

// Members stay in the order in which they were added.
using Json = nlohmann::ordered_json;

std::string hex(std::span<const std::uint8_t> bytes);
std::string hex(const std::string& bytes);

Json headerValuesJson(const model::DatabaseModel& db); // record 0
Json fieldJson(const model::DatabaseModel& db, int slot);
Json attributeJson(const model::DatabaseModel& db, int slot); // null where the type has none
Json listJson(const model::ListDef& list);
Json viewJson(const model::ViewDef& view);
Json filterJson(const model::FilterDef& filter);
Json formJson(const model::FormDef& form);
// The names of the passwords that are set: "Login", "Modify" and so on.
Json passwordKindsJson(const model::DatabaseModel& db);

// True when the slot has a list of items on file.
bool hasList(const model::FieldDef& field);

} // namespace tallybook::cli
