// An object of a description of a database, read with its place in mind: what is wrong with it can be told.
#pragma once

#include "cli/frame/ExitCode.h"
#include "cli/rows/ModelJson.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::cli {

// Ends the making of a database. Usage: the description itself makes no sense. Refused: a value of it cannot be
// taken; the text is empty when a message has told why. UTF-8.
struct SchemaFault {
    ExitCode code = ExitCode::Usage;
    std::string place; // "fields[2]", empty for the whole
    std::string text;
};

class SchemaObject {
public:
    // Throws a SchemaFault when the value is no object. The value must outlive this.
    SchemaObject(const Json& json, std::string place);

    const Json& json() const { return m_json; }
    const std::string& place() const { return m_place; }
    bool has(std::string_view key) const { return m_json.contains(std::string(key)); }

    // Throws at a member that is not among the names.
    void allowOnly(std::span<const std::string_view> names) const;

    // Members. One that is missing gives what an empty one gives; one of another kind throws. Texts come out in
    // Windows-1252; a character that has no place there is a refusal.
    std::string text(std::string_view key) const;
    bool flag(std::string_view key) const;
    int number(std::string_view key, int least, int most, int otherwise = 0) const;
    std::vector<std::string> texts(std::string_view key) const; // numbers stand for their digits
    std::vector<SchemaObject> objects(std::string_view key) const;
    SchemaObject object(std::string_view key) const;
    std::vector<std::uint8_t> bytes(std::string_view key) const; // written in hex

    // Position of the text among entries, without regard to blanks at their ends; a text that is none is a refusal,
    // a missing one gives `otherwise`.
    int entry(std::string_view key, std::span<const std::string_view> entries, int otherwise = 0) const;

    [[noreturn]] void misuse(std::string_view key, std::string text) const; // the description makes no sense
    [[noreturn]] void refuse(std::string_view key, std::string text = {}) const;

private:
    std::string placeOf(std::string_view key) const;
    const Json* find(std::string_view key) const;

    const Json& m_json;
    std::string m_place;
};

// A text of a description, as SchemaObject::text gives it.
std::string schemaText(const Json& json, const std::string& place);

// True for a text without characters; false for everything else, null and empty lists too.
template <class AnyJson> bool isEmptyText(const AnyJson& json) {
    return json.is_string() && json.template get_ref<const std::string&>().empty();
}

} // namespace tallybook::cli
