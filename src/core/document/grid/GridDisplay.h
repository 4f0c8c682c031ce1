// The grid's look: headers, widths, alignment, best fit, and what the mouse and the clipboard do with places in it.
#pragma once

#include "core/document/edit/CellEditing.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>
#include <string_view>

namespace tallybook::document {

// The choices of the View menu.
struct DisplayChoices {
    bool notUsedFields = true; // mnuViewNotUsedFields
    bool fieldTypes = true;    // mnuViewFieldTypes

    bool operator==(const DisplayChoices&) const = default;
};

// Names and type names in the header rows, alignments and coders for the columns. A slot without a name is headed
// "Fld01" and so on. The texts of the columns stay what they are.
void gridLoadFieldNames20(model::Document& doc, const platform::Regional& regional);

// The same for one slot, after its name, type or digits have changed.
void gridLoadField(model::Document& doc, const platform::Regional& regional, int slot);

// Widths of unused fields, height of the type row, alignments. A used column keeps its width unless it is hidden.
void FormatGrid(model::Document& doc, const DisplayChoices& choices);

// How wide texts are drawn.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    // Twips of a text as the grid draws it.
    virtual int textWidth(std::string_view text) const = 0;
    // Twips of each byte on its own: a bound by sums, so that only the widest texts need textWidth.
    virtual int characterWidth(unsigned char character) const = 0;
    virtual int screenWidth() const = 0; // twips
};

// Widths of all used columns from their texts, the name included, at most a quarter of the screen. Commits the open
// edit first; the first cell is current afterwards. Hidden rows count.
void bestFit1(model::Document& doc, platform::Services& services, const TextMeasure& measure);

// The same for one used column; the current cell stays.
void bestFitColumn(model::Document& doc, platform::Services& services, const TextMeasure& measure, int column);

// Where the mouse was pressed, in grid rows and columns.
struct MousePlace {
    int row = 0; // 0 and 1 are the headers; rows() when below the last row
    int col = 0; // 0 is the record number; kScratchColumn when right of the last column
};

// A click of the left button on ViewGrd: asks for the right to change records, then selects all, a column or a row,
// or makes a record's cell current and opens it as ModifyRecord does.
void clickView(model::Document& doc, platform::Services& services, MousePlace place);

// The row that a grid begins with: the first one that can be seen, or the first of all when none can.
int firstRow(const model::GridModel& grid);

// Selections of all cells, a column or a row. The scratch column is nobody's to select; a view without columns has
// nothing to select.
void selectAll(model::GridModel& grid);
void selectColumn(model::GridModel& grid, int column);
void selectRow(model::GridModel& grid, int row);

// True when the selection is one record, whole.
bool isRowSelected(const model::GridModel& grid);

// What a grid without cells says in their place: what to do first, or why there is nothing to be seen. Empty when
// there are cells.
std::string_view gridHint(const model::Document& doc);

enum class PopUp { None, mnuColumn, mnuRow };

// A click of the left button: asks for the right to change records, commits the open edit, then selects all, a
// column or a row, or begins editing the cell. Without records a field's header makes its column current. Does
// nothing when the right is refused.
EditAction leftClick(model::Document& doc, platform::Services& services, MousePlace place);

// A press of the right button selects the column or row and tells which menu to pop up. After the menu,
// rightClickDone puts the selection back.
PopUp rightClick(model::Document& doc, platform::Services& services, MousePlace place);
void rightClickDone(model::Document& doc, platform::Services& services, PopUp shown);

// The menu key: as the right button, but the selection stays. The row's menu is for a row that is selected whole.
PopUp menuKey(model::Document& doc, platform::Services& services);

// What a new size of the window does: the editors close without a commit and the first cell is current.
void gridResized(model::Document& doc);

// The selected block of the shown grid as clipboard text: cells joined with tabs, rows with line breaks, check boxes
// as Y and N. Hidden rows of grd are copied too; a view has no cells of them and leaves them out.
std::string CopyGridCells(model::Document& doc, platform::Services& services);

// True when more than one cell of the shown grid is selected.
bool hasBlock(const model::Document& doc);

// True, with the message, when a block is selected: Cut and Paste know one cell only.
bool refuseBlock(const model::Document& doc, platform::Services& services);

} // namespace tallybook::document
