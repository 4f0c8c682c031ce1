#include "cli/schema/SchemaObject.h"

#include "cli/frame/IncomingText.h"

#include <algorithm>
#include <optional>

namespace tallybook::cli {

namespace {

std::string_view trimmedEntry(std::string_view entry) {
    const std::size_t end = entry.find_last_not_of(' ');
    return entry.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

std::optional<int> digitOf(char c) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const std::size_t place = kDigits.find(c);
    return place == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(place));
}

} // namespace

std::string schemaText(const Json& json, const std::string& place) {
    if (!json.is_string())
        throw SchemaFault{ExitCode::Usage, place, "A text belongs here."};
    const std::string& utf8 = json.get_ref<const std::string&>();
    if (std::string fault = faultOfText(utf8); !fault.empty())
        throw SchemaFault{ExitCode::Refused, place, std::move(fault)};
    return checkedText(utf8);
}

SchemaObject::SchemaObject(const Json& json, std::string place) : m_json(json), m_place(std::move(place)) {
    if (!json.is_object())
        throw SchemaFault{ExitCode::Usage, m_place, "An object belongs here."};
}

std::string SchemaObject::placeOf(std::string_view key) const {
    return m_place.empty() ? std::string(key) : m_place + '.' + std::string(key);
}

void SchemaObject::misuse(std::string_view key, std::string text) const {
    throw SchemaFault{ExitCode::Usage, placeOf(key), std::move(text)};
}

void SchemaObject::refuse(std::string_view key, std::string text) const {
    throw SchemaFault{ExitCode::Refused, key.empty() ? m_place : placeOf(key), std::move(text)};
}

const Json* SchemaObject::find(std::string_view key) const {
    const auto found = m_json.find(std::string(key));
    return found == m_json.end() ? nullptr : &*found;
}

void SchemaObject::allowOnly(std::span<const std::string_view> names) const {
    for (const auto& [key, value] : m_json.items())
        if (std::find(names.begin(), names.end(), key) == names.end())
            misuse(key, "There is no such member here.");
}

std::string SchemaObject::text(std::string_view key) const {
    const Json* value = find(key);
    return value == nullptr ? std::string() : schemaText(*value, placeOf(key));
}

bool SchemaObject::flag(std::string_view key) const {
    const Json* value = find(key);
    if (value != nullptr && !value->is_boolean())
        misuse(key, "true or false belongs here.");
    return value != nullptr && value->get<bool>();
}

int SchemaObject::number(std::string_view key, int least, int most, int otherwise) const {
    const Json* value = find(key);
    if (value == nullptr)
        return otherwise;
    if (!value->is_number_integer())
        misuse(key, "A whole number belongs here.");
    const bool huge = value->is_number_unsigned() && value->get<std::uint64_t>() > std::uint64_t{1} << 62;
    const std::int64_t number = huge ? most + std::int64_t{1} : value->get<std::int64_t>();
    if (number < least || number > most)
        refuse(key, "The number must be from " + std::to_string(least) + " to " + std::to_string(most) + ".");
    return static_cast<int>(number);
}

std::vector<std::string> SchemaObject::texts(std::string_view key) const {
    std::vector<std::string> all;
    const Json* value = find(key);
    if (value == nullptr)
        return all;
    if (!value->is_array())
        misuse(key, "An array belongs here.");
    for (const Json& item : *value)
        all.push_back(item.is_number() ? item.dump()
                                       : schemaText(item, placeOf(key) + '[' + std::to_string(all.size()) + ']'));
    return all;
}

std::vector<SchemaObject> SchemaObject::objects(std::string_view key) const {
    std::vector<SchemaObject> all;
    const Json* value = find(key);
    if (value == nullptr)
        return all;
    if (!value->is_array())
        misuse(key, "An array belongs here.");
    for (const Json& item : *value)
        all.emplace_back(item, placeOf(key) + '[' + std::to_string(all.size()) + ']');
    return all;
}

SchemaObject SchemaObject::object(std::string_view key) const {
    static const Json kEmpty = Json::object();
    const Json* value = find(key);
    return {value == nullptr ? kEmpty : *value, placeOf(key)};
}

std::vector<std::uint8_t> SchemaObject::bytes(std::string_view key) const {
    const std::string digits = text(key);
    std::vector<std::uint8_t> all;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        const auto high = digitOf(digits[at]);
        const auto low = digitOf(digits[at + 1]);
        if (!high || !low)
            break;
        all.push_back(static_cast<std::uint8_t>(*high * 16 + *low));
    }
    if (all.size() * 2 != digits.size())
        misuse(key, "Bytes in hex belong here.");
    return all;
}

int SchemaObject::entry(std::string_view key, std::span<const std::string_view> entries, int otherwise) const {
    if (!has(key))
        return otherwise;
    const std::string chosen = text(key);
    const auto found = std::find_if(entries.begin(), entries.end(), [&](std::string_view entry) {
        return trimmedEntry(entry) == trimmedEntry(chosen);
    });
    if (found == entries.end()) {
        std::string offered;
        for (const std::string_view entry : entries)
            offered += (offered.empty() ? "\"" : ", \"") + std::string(trimmedEntry(entry)) + '"';
        refuse(key, "One of these belongs here: " + offered + '.');
    }
    return static_cast<int>(found - entries.begin());
}

} // namespace tallybook::cli
