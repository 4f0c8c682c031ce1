#include "core/design/ExternalChoices.h"

#include "core/calc/Numbers.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/platform/Ansi.h"

#include <algorithm>

namespace tallybook::design {

namespace {

using model::DatabaseModel;
using model::FieldType;
using Entries = std::vector<NumberedEntry>;

constexpr int kViews = model::MaxViews - 1; // the last slot is carried, not offered

std::string lower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

bool endsWithExtension(const std::string& lowered) {
    return lowered.ends_with(pdb::kExtension);
}

// The name of the file, in lower case.
std::string fileNameOf(std::string_view source) {
    std::string name(source);
    if (!endsWithExtension(lower(name)))
        name += pdb::kExtension;
    if (!pdb::has2xPrefix(name) && !pdb::has1xPrefix(name))
        name.insert(0, pdb::kPrefix2x);
    return lower(pdb::addUnderscore20(name));
}

std::string textOf(const std::filesystem::path& name) {
    const std::u8string utf8 = name.u8string();
    return platform::ansi::fromUtf8(std::string(utf8.begin(), utf8.end()));
}

// The files of the folder with names of the present format.
std::vector<std::filesystem::path> tallybooksOf(const model::Document& doc, platform::Services& services) {
    if (doc.CurrFolder.empty())
        return {};
    auto listed = services.files.list(doc.CurrFolder);
    if (!listed.ok())
        return {};
    std::vector<std::filesystem::path> names;
    for (const std::filesystem::path& name : listed.value()) {
        const std::string text = lower(textOf(name));
        if (text.starts_with(lower(pdb::kPrefix2x)) && endsWithExtension(text))
            names.push_back(name);
    }
    return names;
}

std::string numbered(std::string_view what, int number) {
    return std::string(what) + ' ' + calc::zeroPadded(static_cast<std::uint64_t>(number), 2);
}

bool isKeyType(FieldType type) {
    static constexpr std::array kTypes = {FieldType::Text, FieldType::Integer, FieldType::Long, FieldType::Key,
                                          FieldType::AutoIncremental};
    return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

template <class Wanted> Entries fieldsOf(const DatabaseModel* other, Wanted wanted) {
    Entries entries;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const auto number = static_cast<std::uint8_t>(slot);
        if (other == nullptr) {
            entries.push_back({number, numbered("Field", slot)});
            continue;
        }
        const model::FieldDef& field = other->Fields[static_cast<std::size_t>(slot)];
        if (wanted(field.Type))
            entries.push_back({number, field.Name});
    }
    return entries;
}

} // namespace

std::vector<std::string> otherTallybooks(const model::Document& doc, platform::Services& services) {
    std::vector<std::string> names;
    for (const std::filesystem::path& name : tallybooksOf(doc, services))
        if (name != doc.CurrFilePath.filename())
            names.push_back(textOf(name.stem()));
    return names;
}

std::unique_ptr<DatabaseModel> readOtherTallybook(const model::Document& doc, platform::Services& services,
                                                  std::string_view source) {
    if (source.empty())
        return nullptr;
    const std::string wanted = fileNameOf(source);
    for (const std::filesystem::path& name : tallybooksOf(doc, services)) {
        if (lower(textOf(name)) != wanted)
            continue;
        const auto bytes = services.files.read(doc.CurrFolder / name);
        auto other = std::make_unique<DatabaseModel>();
        if (bytes.ok() && pdb::readStructure(*other, bytes.value(), textOf(name)).ok())
            return other;
    }
    return nullptr;
}

Entries otherViews(const DatabaseModel* other) {
    Entries entries;
    for (int view = 0; view < kViews; ++view) {
        if (other == nullptr)
            entries.push_back({static_cast<std::uint8_t>(view), numbered("View", view + 1)});
        else if (const std::string& name = other->Views[static_cast<std::size_t>(view)].Name; !name.empty())
            entries.push_back({static_cast<std::uint8_t>(view), name});
    }
    return entries;
}

Entries otherFields(const DatabaseModel* other) {
    return fieldsOf(other, [](FieldType type) { return type != FieldType::NotUsed; });
}

Entries otherKeyFields(const DatabaseModel* other) {
    return fieldsOf(other, isKeyType);
}

std::optional<std::uint8_t> keyTypeOf(const DatabaseModel* other, int field) {
    if (other == nullptr || field < 1 || field > model::MaxUserFields)
        return std::nullopt;
    const FieldType type = other->Fields[static_cast<std::size_t>(field)].Type;
    return isKeyType(type) ? std::optional(static_cast<std::uint8_t>(type)) : std::nullopt;
}

Entries joinsOf(const DatabaseModel& db) {
    return fieldsOf(&db, [](FieldType type) { return type == FieldType::DBJoin; });
}

int positionOfNumber(Entries& entries, std::optional<std::uint8_t> number) {
    if (!number)
        return -1;
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const NumberedEntry& entry) { return entry.number == *number; });
    if (found != entries.end())
        return static_cast<int>(found - entries.begin());
    entries.push_back({*number, '(' + std::to_string(*number) + ')'});
    return static_cast<int>(entries.size()) - 1;
}

} // namespace tallybook::design
