// A field of a description, and the controls of Field Properties that make it.
#pragma once

#include "cli/schema/SchemaObject.h"
#include "core/design/FieldProperties.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Services.h"

namespace tallybook::cli {

// The type that a name stands for, without regard to case; nothing for a name that is none.
std::optional<model::FieldType> fieldTypeNamed(std::string_view name);

// What the controls show of a field of this type, each member only where it says something: "default", "decimals",
// "autoWriter" and so on. Items of a list are not among them.
Json attributesJson(const model::DatabaseModel& db, const design::FieldPropDraft& draft);

// The items of a list: texts, or objects with an id where the ids are not 1, 2, 3 in this order.
Json itemsJson(const model::ListDef& list);

// Throws at a member that a field of the type does not have.
void allowAttributes(const SchemaObject& field, model::FieldType type);

// Enters the members of a field in the controls; the draft has its type already. What cannot be chosen or typed
// there is a refusal.
void enterAttributes(const SchemaObject& field, const model::DatabaseModel& db, platform::Services& services,
                     design::FieldPropDraft& draft);

// Adds the items of the member "items", as the list editor does.
void enterItems(const SchemaObject& owner, platform::Services& services, model::ListDef& list);

// The result type that a calculated field will have, so that others can name it before it is made; 0 for other
// types, and for a format that is none.
std::uint8_t describedResultType(const SchemaObject& field, model::FieldType type);

// The slot 1 to 80 of a used field's name, 0 for none.
int slotNamed(const model::DatabaseModel& db, std::string_view name);

} // namespace tallybook::cli
