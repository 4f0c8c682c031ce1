#include "cli/schema/SchemaParts.h"

#include "cli/frame/Texts.h"
#include "cli/schema/SchemaCarried.h"
#include "cli/schema/SchemaConditions.h"
#include "cli/schema/SchemaFields.h"
#include "core/calc/values/Ansi.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/design/FilterDesign.h"
#include "core/design/Properties.h"
#include "core/design/ViewDesign.h"
#include "core/pdb/Names.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <array>
#include <memory>

namespace tallybook::cli {

namespace {

using model::DatabaseModel;
using model::FieldType;

constexpr int kNoneEntry = 0;
constexpr int kFirstFieldEntry = 2; // of CmbFields
constexpr int kMostFrozen = 3;

std::string utf8(std::string_view text) {
    return calc::ansi::toUtf8(text);
}

FieldType typeOf(const SchemaObject& field, int slot) {
    if (slot == 0 && !field.has("type"))
        return FieldType::List;
    const std::string name = field.text("type");
    const auto type = fieldTypeNamed(name);
    if (!type)
        field.refuse("type", noSuchType(utf8(name)));
    if (slot == 0 && *type != FieldType::List)
        field.misuse("type", std::string(kCategoriesAreList));
    return *type;
}

// A document for a trial, with the database as it stands.
std::unique_ptr<model::Document> trialOf(const DatabaseModel& db) {
    auto trial = std::make_unique<model::Document>();
    trial->CurrDB20 = db;
    return trial;
}

// Runs a making that may be refused.
template <class Make> bool succeeds(Make make) {
    try {
        make();
        return true;
    } catch (const SchemaFault&) {
        return false;
    }
}

void addCarried(Json carried, Json& object) {
    if (!carried.is_null())
        object["carried"] = std::move(carried);
}

// What a dialog would refuse: all that the slot has, compared with an empty one.
Json carriedOnly(int slot, Json carried) {
    return {{"slot", slot}, {"carried", carried.is_null() ? Json::object() : std::move(carried)}};
}

int positionIn(const std::vector<std::string>& entries, int from, const std::string& name) {
    const auto found = std::find(entries.begin() + from, entries.end(), name);
    return found == entries.end() ? kNoneEntry : static_cast<int>(found - entries.begin());
}

// Views ------------------------------------------------------------------------------------------------------

// The designer on a view's slot; false for the slot that it does not offer.
bool chooseSlot(design::ViewDesign& designer, int slot) {
    const auto entries = static_cast<int>(designer.CmbView().size());
    for (int position = 0; position < entries; ++position) {
        designer.chooseView(position);
        if (designer.viewSlot() == slot)
            return true;
    }
    return false;
}

// Puts a field in the first free row, which becomes the current one.
void addColumn(const SchemaObject& owner, std::string_view key, const std::string& name,
               design::ViewDesign& designer) {
    const int entry = positionIn(designer.CmbFields(), kFirstFieldEntry, name);
    if (entry == kNoneEntry)
        owner.refuse(key, utf8(platform::texts::noSuchField(name)));
    designer.CmdAdd();
    if (designer.opensSort()) // every row is filled
        owner.refuse(key, utf8(platform::texts::kTooManyColumns));
    designer.chooseField(entry);
}

int rowOf(const design::ViewDesign& designer, const std::string& name) {
    const auto& rows = designer.Grid();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.Fields == name; });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

// A key on a field that is no column is what is left when its column is taken out.
void addSortKey(const SchemaObject& key, int number, design::ViewDesign& designer) {
    key.allowOnly(std::array<std::string_view, 2>{"field", "descending"});
    if (!key.has("field"))
        return;
    const std::string name = key.text("field");
    const int row = rowOf(designer, name);
    if (row < 0)
        addColumn(key, "field", name, designer);
    else
        designer.selectRow(row);
    designer.chooseSort(1 + 2 * number + (key.flag("descending") ? 1 : 0));
    if (row < 0)
        designer.CmdRemove();
}

Json sortJson(const DatabaseModel& db, const design::ViewDesign& designer) {
    Json keys = Json::array();
    for (const design::ViewDesign::SortKey& key : designer.sortKeys()) {
        Json json = Json::object();
        if (key.field != 0 && key.field <= model::MaxUserFields) {
            json["field"] = utf8(db.Fields[key.field].Name);
            if (key.direction != 0)
                json["descending"] = true;
        }
        keys.push_back(std::move(json));
    }
    while (!keys.empty() && keys.back().empty())
        keys.erase(keys.size() - 1);
    return keys;
}

// What the designer shows of a view.
Json viewWords(const DatabaseModel& db, const design::ViewDesign& designer, int slot) {
    Json words = {{"slot", slot}, {"name", utf8(designer.TxtView)}};
    Json columns = Json::array();
    for (const auto& row : designer.Grid())
        if (!row.Fields.empty())
            columns.push_back(utf8(row.Fields));
    words["columns"] = std::move(columns);
    if (Json sort = sortJson(db, designer); !sort.empty())
        words["sort"] = std::move(sort);
    if (designer.cols > 0)
        words["frozen"] = designer.cols;
    if (designer.filter > 0)
        words["filter"] = utf8(designer.CmbFilter()[static_cast<std::size_t>(designer.filter)]);
    return words;
}

int highestNamedView(const DatabaseModel& db) {
    int slot = model::MaxViews;
    while (slot > 0 && db.Views[static_cast<std::size_t>(slot) - 1].Name.empty())
        --slot;
    return slot;
}

// A view as a save writes it: columns behind the last one with a field are left out.
model::ViewDef savedForm(model::ViewDef view) {
    view.NumCols = static_cast<std::uint8_t>(model::highestColumn(view));
    std::fill(view.Columns.begin() + view.NumCols, view.Columns.end(), model::ViewColumn{});
    return view;
}

// Properties -------------------------------------------------------------------------------------------------

void addFlag(const char* key, bool set, Json& json) {
    if (set)
        json[key] = true;
}

Json filterNames(const DatabaseModel& db, std::uint16_t mask) {
    Json names = Json::array();
    for (std::size_t slot = 0; slot < model::MaxFilters; ++slot)
        if ((mask >> slot & 1) != 0 && !db.Filters[slot].Name.empty())
            names.push_back(utf8(db.Filters[slot].Name));
    return names;
}

} // namespace

std::string freeSlotName(int slot) {
    return "Fld" + calc::zeroPadded(static_cast<std::uint64_t>(slot), 2);
}

bool isCarriedOnly(const SchemaObject& object) {
    const std::size_t others = object.has("slot") ? 1 : 0;
    return object.has("carried") && object.json().size() == others + 1;
}

// Fields -----------------------------------------------------------------------------------------------------

void announceField(const SchemaObject& field, DatabaseModel& db, int slot) {
    clearSlot(db, slot);
    const FieldType type = typeOf(field, slot);
    model::FieldDef& announced = db.Fields[static_cast<std::size_t>(slot)];
    announced.Type = type;
    if (slot > 0 || field.has("name"))
        announced.Name = field.text("name");
    if (const std::uint8_t resultType = describedResultType(field, type); resultType != 0)
        db.Expressions[slot].ResultType = resultType;
}

void makeField(const SchemaObject& field, model::Document& doc, platform::Services& services, int slot) {
    design::FieldPropDraft draft = design::fillAttributeValues(doc.CurrDB20, slot, services);
    enterAttributes(field, doc.CurrDB20, services, draft);
    if (slot == 0 && field.has("searched"))
        field.misuse("searched", std::string(kCategoriesNotSearched));
    if (draft.type() == FieldType::DBJoin) // a new one, so that nobody is told that its fields have changed
        doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type = FieldType::NotUsed;
    if (!design::fieldPropertiesOK(doc, services, slot, draft, design::FieldPropMode::Ma).accepted)
        field.refuse({});
    if (draft.type() == FieldType::List)
        enterItems(field, services, doc.CurrDB20.Lists[slot]);
}

Json describeField(const DatabaseModel& db, int slot, platform::Services& quiet) {
    const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    const bool isFree = field.Type == FieldType::NotUsed;
    model::FieldDef fresh;
    fresh.Name = freeSlotName(slot);
    if (isFree && field == fresh)
        return nullptr;
    Json words = {{"slot", slot}, {"name", utf8(field.Name)}};
    if (slot > 0)
        words["type"] = model::fieldTypeName(field.Type);
    words.update(attributesJson(db, design::fillAttributeValues(db, slot, quiet)));
    if (field.Type == FieldType::List && db.Lists.at(slot).Count() > 0)
        words["items"] = itemsJson(db.Lists.at(slot));
    if (slot > 0 && field.SearchField == 1)
        words["searched"] = true;
    const auto trial = trialOf(db);
    const bool made = succeeds([&] {
        const SchemaObject object(words, {});
        announceField(object, trial->CurrDB20, slot);
        makeField(object, *trial, quiet, slot);
    });
    if (!made) {
        clearSlot(trial->CurrDB20, slot);
        return carriedOnly(slot, carriedOfField(db, trial->CurrDB20, slot));
    }
    trial->CurrDB20.Fields[static_cast<std::size_t>(slot)].SearchField = words.contains("searched") ? 1 : 0;
    addCarried(carriedOfField(db, trial->CurrDB20, slot), words);
    return words;
}

// Filters ----------------------------------------------------------------------------------------------------

void makeFilter(const SchemaObject& filter, model::Document& doc, platform::Services& services, int slot) {
    filter.allowOnly(std::array<std::string_view, 4>{"slot", "name", "conditions", "carried"});
    design::FilterControls controls = conditionControls(doc.CurrDB20, filter);
    controls.LblFilterName = filter.text("name");
    if (!design::filterOk(doc, services, slot, controls).accepted)
        filter.refuse({});
}

Json describeFilter(const DatabaseModel& db, int slot, platform::Services& quiet) {
    const model::FilterDef& filter = db.Filters[static_cast<std::size_t>(slot)];
    if (filter == model::FilterDef{})
        return nullptr;
    const design::FilterControls controls = design::CurrentDefinition(db, filter);
    Json words = {
        {"slot", slot}, {"name", utf8(controls.LblFilterName)}, {"conditions", conditionsJson(db, controls)}};
    const auto trial = trialOf(db);
    model::FilterDef& made = trial->CurrDB20.Filters[static_cast<std::size_t>(slot)];
    made = {};
    if (!succeeds([&] { makeFilter(SchemaObject(words, {}), *trial, quiet, slot); }))
        return carriedOnly(slot, carriedOfFilter(filter, {}));
    addCarried(carriedOfFilter(filter, made), words);
    return words;
}

std::uint16_t multipleFilter(const SchemaObject& whole, const DatabaseModel& db) {
    unsigned mask = 0;
    for (const std::string& name : whole.texts("multipleFilter")) {
        const auto found = std::find_if(db.Filters.begin(), db.Filters.begin() + model::MaxFilters,
                                        [&](const model::FilterDef& filter) { return filter.Name == name; });
        if (name.empty() || found == db.Filters.begin() + model::MaxFilters)
            whole.refuse("multipleFilter", utf8(noSuchFilter(name)));
        mask |= 1u << static_cast<unsigned>(found - db.Filters.begin());
    }
    return static_cast<std::uint16_t>(mask);
}

// Views ------------------------------------------------------------------------------------------------------

void makeView(const SchemaObject& view, model::Document& doc, platform::Services& services, int slot) {
    view.allowOnly(std::array<std::string_view, 7>{"slot", "name", "columns", "sort", "frozen", "filter", "carried"});
    design::ViewDesign designer(doc, services);
    if (!chooseSlot(designer, slot))
        view.refuse({});
    if (view.has("name"))
        designer.TxtView = view.text("name");
    for (const std::string& name : view.texts("columns"))
        addColumn(view, "columns", name, designer);
    const std::vector<SchemaObject> keys = view.objects("sort");
    if (keys.size() > designer.sortKeys().size())
        view.refuse("sort", std::string(kTooManySortKeys));
    for (std::size_t i = 0; i < keys.size(); ++i)
        addSortKey(keys[i], static_cast<int>(i), designer);
    designer.cols = view.number("frozen", 0, kMostFrozen);
    if (view.has("filter")) {
        const std::string name = view.text("filter");
        designer.filter = positionIn(designer.CmbFilter(), 1, name);
        if (designer.filter == kNoneEntry)
            view.refuse("filter", utf8(noSuchFilter(name)));
    }
    if (!designer.cmdOK())
        view.refuse({});
}

Json describeView(const DatabaseModel& db, int slot, platform::Services& quiet) {
    const auto at = static_cast<std::size_t>(slot);
    const model::ViewDef view = savedForm(db.Views[at]);
    if (view == model::ViewDef{})
        return nullptr;
    const auto trial = trialOf(db);
    design::ViewDesign designer(*trial, quiet);
    if (view.Name.empty() || !chooseSlot(designer, slot))
        return carriedOnly(slot, carriedOfView(view, {}));
    Json words = viewWords(db, designer, slot);
    trial->CurrDB20.Views[at] = {};
    if (!succeeds([&] { makeView(SchemaObject(words, {}), *trial, quiet, slot); }))
        return carriedOnly(slot, carriedOfView(view, {}));
    addCarried(carriedOfView(view, savedForm(trial->CurrDB20.Views[at])), words);
    return words;
}

// Properties -------------------------------------------------------------------------------------------------

void makeProperties(const SchemaObject& whole, model::Document& doc, platform::Services& services,
                    const std::set<int>& searchedSlots, const std::string& stem) {
    design::UserList nobody;
    design::Properties properties(doc, services, nobody);
    properties.txtPDBname = whole.has("name") ? whole.text("name") : stem;
    properties.ChkSearch = whole.flag("search");
    properties.ChkReadOnly = whole.flag("readOnly");
    properties.ChkNoBackup = whole.flag("noBackup");
    const SchemaObject startup = whole.object("startup");
    startup.allowOnly(std::array<std::string_view, 2>{"show", "text"});
    properties.ChkStartup = startup.flag("show");
    properties.TxtStartup = calc::LfToCrLf(startup.text("text"));
    for (auto& line : properties.LstFields)
        line.selected = searchedSlots.contains(line.slot);
    properties.CmdLstOK();
    if (!properties.CmdDone())
        startup.refuse("text");
    if (properties.cmdOK() != design::Properties::Accepted::Done)
        whole.refuse("name");
}

Json describeProperties(const DatabaseModel& db, const std::string& stem, platform::Services& quiet) {
    const auto shown = trialOf(db);
    design::UserList nobody;
    const design::Properties properties(*shown, quiet, nobody);
    Json words = Json::object();
    words["name"] = utf8(db.DBName.empty() ? stem : properties.txtPDBname);
    addFlag("readOnly", properties.ChkReadOnly, words);
    addFlag("noBackup", properties.ChkNoBackup, words);
    addFlag("search", properties.ChkSearch, words);
    if (properties.ChkStartup || !db.StartupText.empty()) {
        words["startup"] = Json::object();
        addFlag("show", properties.ChkStartup, words["startup"]);
        if (!db.StartupText.empty())
            words["startup"]["text"] = utf8(db.StartupText);
    }
    if (Json names = filterNames(db, db.DefaultFilterMask); !names.empty())
        words["multipleFilter"] = std::move(names);

    model::Document trial;
    const auto make = [&](const std::string& otherwise) {
        trial.CurrDB20 = {};
        const SchemaObject object(words, {});
        makeProperties(object, trial, quiet, {}, otherwise);
        trial.CurrDB20.DefaultFilterMask = multipleFilter(object, db);
    };
    if (!succeeds([&] { make({}); })) { // a name that no dialog takes
        words.erase("name");
        make("Tallybook");
        trial.CurrDB20.DBName.clear();
    } else if (pdb::headerName(trial.CurrDB20.DBName, stem) == pdb::headerName(db.DBName, stem)) {
        trial.CurrDB20.DBName = db.DBName;
    }
    trial.CurrDB20.NumViews = static_cast<std::uint8_t>(highestNamedView(db));
    addCarried(carriedOfDatabase(db, trial.CurrDB20), words);
    return words;
}

} // namespace tallybook::cli
