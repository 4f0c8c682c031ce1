// The list editor without its widgets: the items of the lists and of the categories. Changes are made in place.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <set>
#include <string>
#include <vector>

namespace tallybook::design {

class ListEditor {
public:
    // Opens on a slot's list. `slot` is offered even when its field is no list yet; `name` is what its field is to be
    // called, when that differs from what is stored.
    ListEditor(model::Document& doc, platform::Services& services, int slot, std::string name = {});

    // buildCombo: the names of the categories and of the lists; buildList: the items of the chosen one.
    std::vector<std::string> cmbList() const;
    int listPosition() const;
    void chooseList(int position);
    const std::vector<std::string>& lst() const;
    int slot() const { return m_slot; }

    // The buttons. `selected` is the position in `lst`, -1 for none; those that move or change an item give the
    // position that is selected afterwards.
    int CmdAdd();
    int cmdEdit(int selected); // a double click, too
    int cmdDelete(int selected);
    void cmdSort();
    int cmdUp(int selected);
    int cmdDown(int selected);

    // Closes: the columns of the lists that were changed show their items anew. True when something was changed.
    bool OKButton();

private:
    model::ListDef& list();
    bool refusesNoSelection(int selected);
    int moveTo(int selected, int place);

    model::Document& m_doc;
    platform::Services& m_services;
    int m_slot;
    int m_named;
    std::string m_name; // of the field in slot m_named
    std::vector<int> m_slots;
    std::set<int> m_changed;
};

} // namespace tallybook::design
