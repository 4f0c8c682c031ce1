// Items of a list with their ids. Records store the id, so an item keeps its id whatever becomes of its place.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>

namespace tallybook::design {

// True with the message when the list has all the items that a user may give it.
bool refusesFullList(const model::ListDef& list, platform::Services& services);

// Appends an item under the lowest id that is free. False when nothing was added: a text of blanks, one that is too
// long (with a message), or no id below 255.
bool addItem(model::ListDef& list, const std::string& text, platform::Services& services);

void removeItem(model::ListDef& list, int position);

// Gives every cell of a list's column the text of the item that its record stores.
void refreshItemTexts(model::Document& doc, int slot);

} // namespace tallybook::design
