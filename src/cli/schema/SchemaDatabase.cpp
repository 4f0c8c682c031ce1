#include "cli/schema/SchemaDatabase.h"

#include "cli/frame/Texts.h"
#include "cli/schema/SchemaCarried.h"
#include "cli/schema/SchemaParts.h"
#include "core/document/file/OpenSave.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/QuietUser.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

namespace tallybook::cli {

namespace {

using model::DatabaseModel;
using model::FieldType;

// A part of the description with the slot that it is for.
struct Part {
    int slot;
    SchemaObject object;
};
using Parts = std::vector<Part>;
using Describe = Json (*)(const DatabaseModel&, int, platform::Services&);

// A part without a slot of its own is for the one behind the part before.
Parts partsOf(const SchemaObject& whole, std::string_view key, int first, int last, std::string_view tooMany) {
    Parts parts;
    std::set<int> taken;
    int slot = first - 1;
    for (const SchemaObject& object : whole.objects(key)) {
        if (object.has("slot"))
            slot = object.number("slot", first, last);
        else if (++slot > last)
            object.refuse({}, std::string(tooMany));
        if (!taken.insert(slot).second)
            object.misuse("slot", std::string(kDoubledSlot));
        parts.push_back({slot, object});
    }
    return parts;
}

// One for which the dialog was asked, and whose carried values must go with what it made.
bool isMixed(const SchemaObject& object) {
    return object.has("carried") && !isCarriedOnly(object);
}

// Members in any order, without those that say nothing.
nlohmann::json meaning(const Json& json) {
    nlohmann::json plain = nlohmann::json::parse(json.dump());
    for (auto member = plain.begin(); member != plain.end();) {
        const bool saysNothing = member->is_null() || *member == false || isEmptyText(*member) ||
                                 ((member->is_array() || member->is_object()) && member->empty());
        member = saysNothing && member.key() != "carried" ? plain.erase(member) : std::next(member);
    }
    return plain;
}

void expectSame(const SchemaObject& given, int slot, const Json& described) {
    Json with = given.json();
    with["slot"] = slot;
    if (slot == 0 && !given.has("name"))
        with["name"] = kCategoriesName;
    if (meaning(with) != meaning(described))
        given.refuse("carried", std::string(kCarriedDiffers));
}

class Maker {
public:
    Maker(const SchemaObject& whole, model::Document& doc, platform::Services& services, const std::string& stem)
        : m_whole(whole), m_doc(doc), m_services(services), m_stem(stem) {}

    void make() {
        m_whole.allowOnly(kMembers);
        document::CreateNewDatabase(m_doc, m_services);
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            db().Fields[static_cast<std::size_t>(slot)].Name.clear();
        makeFields();
        makeFilters();
        makeViews();
        makeProperties(m_whole, m_doc, m_services, searchedSlots(), m_stem);
        carryAll();
        checkCarried();
        nameFreeSlots();
    }

private:
    static constexpr std::array<std::string_view, 11> kMembers = {
        "name",   "readOnly", "noBackup",       "search", "startup", "categories",
        "fields", "filters",  "multipleFilter", "views",  "carried"};

    DatabaseModel& db() { return m_doc.CurrDB20; }

    // All fields are announced before the first is made, since expressions name fields behind them.
    void makeFields() {
        m_fields.push_back({0, categories()});
        for (const Part& field : partsOf(m_whole, "fields", 1, model::MaxUserFields, tooManyFields()))
            m_fields.push_back(field);
        for (const Part& field : m_fields)
            announce(field);
        for (const Part& field : m_fields) {
            if (isCarriedOnly(field.object))
                continue;
            announceField(field.object, db(), field.slot);
            makeField(field.object, m_doc, m_services, field.slot);
            carry(field);
        }
    }

    void announce(const Part& field) {
        if (isCarriedOnly(field.object))
            clearSlot(db(), field.slot);
        else
            announceField(field.object, db(), field.slot);
        carry(field);
    }

    void carry(const Part& field) {
        if (field.object.has("carried"))
            carryField(field.object.object("carried"), db(), field.slot);
    }

    // The categories are an object as a field is, or their items alone.
    SchemaObject categories() {
        static const Json kNone = Json::object();
        if (!m_whole.has("categories"))
            return {kNone, "categories"};
        const Json& given = m_whole.json()["categories"];
        if (!given.is_array())
            return {given, "categories"};
        m_categories = {{"items", given}};
        return {m_categories, "categories"};
    }

    std::string tooManyFields() const { return '"' + m_stem + "\" contains more than 80 fields"; }

    void makeFilters() {
        m_filters = partsOf(m_whole, "filters", 0, model::MaxFilters - 1, kTooManyFilters);
        for (const Part& filter : m_filters) {
            if (!isCarriedOnly(filter.object))
                makeFilter(filter.object, m_doc, m_services, filter.slot);
            carryOver(filter);
        }
        db().DefaultFilterMask = multipleFilter(m_whole, db());
        if (m_whole.has("carried")) // views take it
            db().DefaultFilterMask = static_cast<std::uint16_t>(
                m_whole.object("carried").number("defaultFilterMask", 0, 0xFFFF, db().DefaultFilterMask));
    }

    // A new database has an empty view, which the description's take the place of.
    void makeViews() {
        if (!m_whole.has("views"))
            return;
        db().Views.fill({});
        m_views = partsOf(m_whole, "views", 0, model::MaxViews - 1, kTooManyViews);
        for (const Part& view : m_views) {
            if (!isCarriedOnly(view.object))
                makeView(view.object, m_doc, m_services, view.slot);
            carryOverView(view);
        }
        int views = model::MaxViews;
        while (views > 0 && db().Views[static_cast<std::size_t>(views) - 1].Name.empty())
            --views;
        db().NumViews = static_cast<std::uint8_t>(views);
    }

    void carryOver(const Part& filter) {
        if (filter.object.has("carried"))
            carryFilter(filter.object.object("carried"), db().Filters[static_cast<std::size_t>(filter.slot)]);
    }
    void carryOverView(const Part& view) {
        if (view.object.has("carried"))
            carryView(view.object.object("carried"), db().Views[static_cast<std::size_t>(view.slot)]);
    }

    std::set<int> searchedSlots() const {
        std::set<int> slots;
        for (const Part& field : m_fields)
            if (field.object.flag("searched"))
                slots.insert(field.slot);
        return slots;
    }

    // The searched fields were set for every slot, so what the fields carry is put in its place again.
    void carryAll() {
        for (const Part& field : m_fields)
            carry(field);
        if (m_whole.has("carried"))
            carryDatabase(m_whole.object("carried"), db());
    }

    void checkCarried() {
        platform::QuietUser user;
        platform::Screen screen;
        platform::Services quiet{user, screen, m_services.files, m_services.clock, m_services.regional, {}};
        check(m_fields, describeField, quiet);
        check(m_filters, describeFilter, quiet);
        check(m_views, describeView, quiet);
        if (!m_whole.has("carried"))
            return;
        Json head = m_whole.json();
        for (const char* part : {"categories", "fields", "filters", "views"})
            head.erase(part);
        if (meaning(head) != meaning(describeProperties(db(), m_stem, quiet)))
            m_whole.refuse("carried", std::string(kCarriedDiffers));
    }

    void check(const Parts& parts, Describe describe, platform::Services& quiet) {
        for (const Part& part : parts)
            if (isMixed(part.object))
                expectSame(part.object, part.slot, describe(db(), part.slot, quiet));
    }

    // As in a new database, unless a field has taken the name.
    void nameFreeSlots() {
        std::set<int> described;
        std::set<std::string> names;
        for (const Part& field : m_fields)
            described.insert(field.slot);
        for (const model::FieldDef& field : db().Fields)
            names.insert(field.Name);
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            if (!described.contains(slot) && !names.contains(freeSlotName(slot)))
                db().Fields[static_cast<std::size_t>(slot)].Name = freeSlotName(slot);
    }

    const SchemaObject& m_whole;
    model::Document& m_doc;
    platform::Services& m_services;
    const std::string& m_stem;
    Json m_categories;
    Parts m_fields;
    Parts m_filters;
    Parts m_views;
};

// What a new database has before anybody designs a view.
bool hasViewsOfNewDatabase(const DatabaseModel& db) {
    model::ViewDef first;
    first.Name = "View01";
    return db.NumViews == 1 && model::highestColumn(db.Views[0]) == 0 && db.Views[0].Name == first.Name &&
           db.Views[0].FilterMask == 0;
}

// The database as its file has it: nothing in slots that no record holds, links where the file has them.
DatabaseModel savedForm(const DatabaseModel& db) {
    DatabaseModel saved = db;
    for (std::size_t slot = static_cast<std::size_t>(std::max(1, model::highestField(db)));
         slot < saved.Fields.size(); ++slot)
        saved.Fields[slot] = {};
    for (std::size_t slot = static_cast<std::size_t>(model::highestFilter(db)); slot < saved.Filters.size(); ++slot)
        saved.Filters[slot] = {};
    for (std::size_t slot = db.NumViews; slot < saved.Views.size(); ++slot)
        saved.Views[slot] = {};
    for (int slot = 0; slot < model::MaxFieldSlots; ++slot)
        if (saved.CondExprs.has(slot))
            straightenLinks(saved.CondExprs[slot]);
    return saved;
}

Json describeAll(const DatabaseModel& db, int first, int end, Describe describe, platform::Services& quiet) {
    Json all = Json::array();
    for (int slot = first; slot < end; ++slot)
        if (Json one = describe(db, slot, quiet); !one.is_null())
            all.push_back(std::move(one));
    return all;
}

// The items alone where there is nothing else to say; nothing for none.
void addCategories(Json described, Json& json) {
    described.erase("slot");
    // With "carried" alone nobody would ask the dialog, which made what the carried values are compared with.
    const bool needsName = described.contains("carried") && described.size() == 2;
    if (!needsName && described.value("name", "") == kCategoriesName)
        described.erase("name");
    if (described.size() == 1 && described.contains("items"))
        json["categories"] = described["items"];
    else if (!described.empty())
        json["categories"] = std::move(described);
}

constexpr std::size_t kLineLength = 100;

// The value on one line, with a blank behind commas and colons.
std::string onOneLine(const Json& json) {
    if (!json.is_structured() || json.empty())
        return json.dump();
    std::string line(1, json.is_array() ? '[' : '{');
    for (const auto& [key, value] : json.items()) {
        line += line.size() > 1 ? ", " : "";
        line += json.is_array() ? onOneLine(value) : Json(key).dump() + ": " + onOneLine(value);
    }
    return line + (json.is_array() ? ']' : '}');
}

void appendShown(const Json& json, std::size_t indent, bool mayBeShort, std::string& out) {
    if (!json.is_structured() || json.empty()) {
        out += json.dump();
        return;
    }
    if (mayBeShort) {
        const std::string line = onOneLine(json);
        if (indent + line.size() <= kLineLength) {
            out += line;
            return;
        }
    }
    out += json.is_array() ? '[' : '{';
    const char* comma = "\n";
    for (const auto& [key, value] : json.items()) {
        out += comma + std::string(indent + 2, ' ');
        comma = ",\n";
        if (json.is_object())
            out += Json(key).dump() + ": ";
        appendShown(value, indent + 2, true, out);
    }
    out += '\n' + std::string(indent, ' ') + (json.is_array() ? ']' : '}');
}

} // namespace

std::string shownJson(const Json& json) {
    std::string out;
    appendShown(json, 0, false, out);
    return out + '\n';
}

Json describeDatabase(const DatabaseModel& db, const std::string& stem, const platform::Services& services) {
    platform::QuietUser user;
    platform::Screen screen;
    platform::Services quiet{user, screen, services.files, services.clock, services.regional, {}};
    const DatabaseModel saved = savedForm(db);
    Json json = describeProperties(saved, stem, quiet);
    const Json carried = json.value("carried", Json());
    const Json multiple = json.value("multipleFilter", Json());
    json.erase("carried");
    json.erase("multipleFilter");
    addCategories(describeField(saved, 0, quiet), json);
    json["fields"] = describeAll(saved, 1, model::highestField(saved), describeField, quiet);
    if (Json filters = describeAll(saved, 0, model::MaxFilters, describeFilter, quiet); !filters.empty())
        json["filters"] = std::move(filters);
    if (!multiple.is_null())
        json["multipleFilter"] = multiple;
    if (!hasViewsOfNewDatabase(saved))
        json["views"] = describeAll(saved, 0, model::MaxViews, describeView, quiet);
    if (!carried.is_null())
        json["carried"] = carried;
    return json;
}

void makeDatabase(const SchemaObject& whole, model::Document& doc, platform::Services& services,
                  const std::string& stem) {
    Maker(whole, doc, services, stem).make();
}

} // namespace tallybook::cli
