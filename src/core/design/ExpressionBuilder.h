// The panels that build expressions: the check of the simple form, the help text of its formats, and the lists that
// insert words into the text of the advanced form.
#pragma once

#include "core/design/ExpressionStore.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Services.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

// True when the simple form may be stored in a field's slot; otherwise its message was shown. An entry of an operand
// list is judged by what it stands for, whatever its field is called. The field itself counts as the Expression that
// it will be.
bool VerifyExpression(const SimpleChoices& choices, const model::DatabaseModel& db, platform::Services& services,
                      int ownSlot = 0);

// The choices with every operand and operator empty; the format stays.
SimpleChoices ResetExpression(const SimpleChoices& choices);

// A selection in cmbExpFormat: each operator list keeps its sign where the format has it, and is blank otherwise.
SimpleChoices selectFormat(const SimpleChoices& choices, int format);

// The text of LblFormat for a position of `cmbExpFormat`; empty when none is chosen.
std::string_view ShowFormat(int format);

// The lists beside txtAdvExpression, each with its heading as the first entry.
enum class InsertionList { cmbAdvField, cmbAdvPrev, cmbAdvFunc, cmbAdvOper, cmbAdvColor, cmbAdvConst };
inline constexpr int kInsertionLists = 6;
std::vector<std::string> insertionEntries(InsertionList list, const model::DatabaseModel& db);

// A text box: its text, and the selection in it, from a place of so many characters.
struct TextBox {
    std::string text;
    std::size_t selStart = 0;
    std::size_t selLength = 0;
    bool operator==(const TextBox&) const = default;
};

// Puts the selected entry in the place of the selection, the cursor behind it. False when nothing is inserted: the
// heading or an empty entry was selected.
bool insertEntry(InsertionList list, int position, std::string_view entry, TextBox& box);

// The question of the button ClearExpression.
bool ClearExpression(platform::Services& services);

} // namespace tallybook::design
