// The commands of a script that open, fill and close the editor of a cell.
#include "cli/frame/IncomingText.h"
#include "cli/frame/Texts.h"
#include "cli/rows/FieldNames.h"
#include "cli/script/ScriptRunner.h"
#include "core/calc/values/Ansi.h"
#include "core/calc/values/Dates.h"
#include "core/document/grid/Cells.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/joins/ExternalPicker.h"
#include "core/document/joins/Joins.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace tallybook::cli {

namespace {

using document::EditAction;
using document::EditKey;
using model::EditorKind;

constexpr int kKeyEnter = 13;

struct NamedKey {
    std::string_view name;
    EditKey key;
};
constexpr std::array<NamedKey, 7> kEditKeys = {{
    {"enter", EditKey::Enter},
    {"tab", EditKey::Tab},
    {"shift+tab", EditKey::BackTab},
    {"escape", EditKey::Escape},
    {"f2", EditKey::F2},
    {"up", EditKey::Up},
    {"down", EditKey::Down},
}};

// "2003-01-02" alone, so that a script means the same day in every region.
std::optional<calc::Date> isoDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    calc::Date date;
    const auto part = [&](std::size_t start, std::size_t length, int& number) {
        const char* first = text.data() + start;
        const auto [end, error] = std::from_chars(first, first + length, number);
        return error == std::errc{} && end == first + length;
    };
    if (!part(0, 4, date.year) || !part(5, 2, date.month) || !part(8, 2, date.day) || !calc::isRealDate(date))
        return std::nullopt;
    return date;
}

std::string tooLongForCell() {
    return "a cell takes at most " + std::to_string(model::kTextLength) + " characters";
}

} // namespace

ScriptRunner::Failure ScriptRunner::noModal() const {
    switch (m_modal.open) {
    case EditAction::Open::MemoWindow:
        return "the memo window is open: give it a memo, or key escape";
    case EditAction::Open::RadioDialog:
        return "the choice of the radio button is open: give it a radio, or key escape";
    case EditAction::Open::ImageDialog:
        return "pictures cannot be changed by a script: key escape";
    case EditAction::Open::ExternalPicker:
        return "the picker of the other database is open: give it a pick, or key escape";
    case EditAction::Open::Nothing:
    case EditAction::Open::CellEditor:
        break;
    }
    return std::nullopt;
}

void ScriptRunner::remember(const EditAction& action) {
    if (action.open != EditAction::Open::Nothing && action.open != EditAction::Open::CellEditor)
        m_modal = action;
}

ScriptRunner::Failure ScriptRunner::open(int key) {
    if (model::hasNoRecords(m_doc))
        return "there are no records";
    remember(document::GridEdit(m_doc, m_services, key));
    return std::nullopt;
}

// An editor of this kind over the current cell, opened when none is open. What the cell's field says instead (a
// message, another editor) is the failure.
ScriptRunner::Failure ScriptRunner::needEditor(EditorKind kind, const char* what) {
    if (Failure failure = noModal())
        return failure;
    if (!m_doc.editor.open()) {
        m_user.takeSpoke();
        if (Failure failure = open(document::kKeyBlank))
            return failure;
        if (Failure failure = noModal())
            return failure;
        if (!m_doc.editor.open() && m_user.takeSpoke())
            return std::nullopt; // the message says it
    }
    if (m_doc.editor.kind != kind)
        return std::string("this cell has no ") + what;
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::needModal(EditAction::Open kind, int key, const char* what) {
    if (m_modal.open == kind)
        return std::nullopt;
    if (Failure failure = noModal())
        return failure;
    document::saveCell(m_doc, m_services);
    m_user.takeSpoke();
    if (Failure failure = open(key))
        return failure;
    if (m_modal.open == kind || m_user.takeSpoke())
        return std::nullopt;
    return std::string("this cell has no ") + what;
}

// Mouse and keys -------------------------------------------------------------------------------------------

ScriptRunner::Failure ScriptRunner::doClick(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    if (words.size() == 1)
        return "usage: click [ROW FIELD]";
    Place place{m_doc.grd.row(), m_doc.grd.col()};
    if (!words.empty()) {
        const auto named = placeOf(words[0], words[1]);
        if (const auto* reason = std::get_if<std::string>(&named))
            return *reason;
        place = std::get<Place>(named);
    }
    remember(document::leftClick(m_doc, m_services, {place.row, place.col}));
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doKey(const Words& words) {
    const std::string& name = words[0].text;
    if (name == "escape" && m_modal.open != EditAction::Open::Nothing) {
        m_modal = {};
        return std::nullopt;
    }
    if (Failure failure = noModal())
        return failure;
    if (!m_doc.editor.open())
        return gridKey(name);
    if (name == "blank")
        return typeFurther(" ");
    const auto key =
        std::find_if(kEditKeys.begin(), kEditKeys.end(), [&](const NamedKey& known) { return known.name == name; });
    if (key == kEditKeys.end())
        return "no such key in an editor: " + name;
    remember(document::editorKey(m_doc, m_services, key->key));
    return std::nullopt;
}

void ScriptRunner::moveTo(std::optional<int> row) {
    if (row)
        m_doc.grd.setCell(*row, m_doc.grd.col());
}

ScriptRunner::Failure ScriptRunner::gridKey(const std::string& key) {
    if (model::hasNoRecords(m_doc))
        return "there are no records";
    if (key == "f2" || key == "blank" || key == "enter")
        remember(document::keyOnGrid(m_doc, m_services,
                                     key == "f2"      ? document::kKeyF2
                                     : key == "blank" ? document::kKeyBlank
                                                      : kKeyEnter));
    else if (key == "tab" || key == "right")
        document::moveRight(m_doc);
    else if (key == "shift+tab" || key == "left")
        document::moveLeft(m_doc);
    else if (key == "up")
        moveTo(document::previousRow(m_doc, m_doc.grd.row()));
    else if (key == "down")
        moveTo(document::nextRow(m_doc, m_doc.grd.row()));
    else if (key != "escape")
        return "no such key: " + key;
    return std::nullopt;
}

// Text -----------------------------------------------------------------------------------------------------

// Characters typed one by one into the open editor, as a keyboard does it: the first replaces what is selected.
ScriptRunner::Failure ScriptRunner::typeFurther(const std::string& text) {
    model::EditorState& editor = m_doc.editor;
    if (editor.kind == EditorKind::cmb1)
        return "an item is picked, not typed: use pick";
    for (const char c : text) {
        if (!editor.allSelected && editor.text.size() >= model::kTextLength)
            return tooLongForCell();
        const std::string before = editor.allSelected ? std::string() : editor.text;
        editor.allSelected = false;
        editor.text = before + c;
        if (editor.kind == EditorKind::Text1)
            editor.text = document::textChanged(m_doc, editor.text);
    }
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doType(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    const std::string text = checkedText(words[0].text);
    if (std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return "line breaks and tabs cannot be typed into a cell: use memo or key";
    if (m_doc.editor.open() && !text.empty())
        return typeFurther(text);

    m_user.takeSpoke();
    if (model::hasNoRecords(m_doc))
        return "there are no records";
    if (!m_doc.editor.open()) {
        const int key = text.empty() ? document::kKeyBlank : static_cast<unsigned char>(text.front());
        remember(document::keyOnGrid(m_doc, m_services, key));
    }
    if (Failure failure = noModal())
        return failure;
    if (!m_doc.editor.open())
        return m_user.takeSpoke() ? Failure() : "this cell cannot be typed into";
    if (!text.empty())
        return typeFurther(text.substr(1)); // the first one has opened the editor
    if (Failure failure = typeFurther(text))
        return failure;
    m_doc.editor.text.clear();
    m_doc.editor.allSelected = false;
    return std::nullopt;
}

// Lists, dates, memos --------------------------------------------------------------------------------------

// The first record of the other database whose display text is the word, as it would be chosen in the picker; none
// for a word without characters.
ScriptRunner::Failure ScriptRunner::pickRecord(const ScriptWord& word) {
    if (Failure failure = needModal(EditAction::Open::ExternalPicker, document::kKeyBlank, "record to pick"))
        return failure;
    if (m_modal.open != EditAction::Open::ExternalPicker)
        return std::nullopt;
    m_modal = {};
    document::ExtView view(m_doc);
    if (word.text.empty()) {
        view.cmdNone(m_doc);
        return std::nullopt;
    }
    m_user.takeSpoke();
    view.AddRecordsToView(m_doc, m_services);
    if (m_user.takeSpoke())
        return std::nullopt; // why there is nothing to pick from
    const int slot = model::slotOfColumn(m_doc.grd.col());
    const auto row = document::findDisplayText(m_doc.External.at(slot), checkedText(word.text));
    if (!row)
        return "no such record: " + word.text;
    view.cmdOK(m_doc, row);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doPick(const Words& words) {
    const int slot = model::slotOfColumn(m_doc.grd.col());
    const bool join = slot >= 0 && document::fieldOfColumn(m_doc, m_doc.grd.col()).Type == model::FieldType::DBJoin;
    if (join && m_doc.CurrDB20.Externals.at(slot).MatchField > 0)
        return pickRecord(words[0]);
    if (Failure failure = needEditor(EditorKind::cmb1, "list to pick from"))
        return failure;
    if (!m_doc.editor.open())
        return std::nullopt;
    const std::vector<std::string>& entries = m_doc.editor.entries;
    std::string why;
    const std::optional<std::size_t> found = placeNamed(entries, words[0].text, "item", why);
    if (!found)
        return why;
    if (document::chooseEntry(m_doc, m_services, static_cast<int>(*found)))
        return "the list's own editor cannot be used by a script";
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doRadio(const Words& words) {
    if (Failure failure = needModal(EditAction::Open::RadioDialog, document::kKeyBlank, "radio button"))
        return failure;
    if (m_modal.open != EditAction::Open::RadioDialog)
        return std::nullopt;
    const std::vector<std::string>& items = m_doc.CurrDB20.Lists.at(m_doc.CurrField).Items;
    std::string why;
    const std::optional<std::size_t> found = placeNamed(items, words[0].text, "option", why);
    if (!found)
        return why;
    if (document::acceptRadio(m_doc, m_services, static_cast<int>(*found)))
        m_modal = {};
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doDate(const Words& words) {
    std::optional<calc::Date> date;
    if (words[0].is("today")) {
        const platform::LocalTime now = m_services.clock.now();
        date = calc::Date{now.year, now.month, now.day};
    } else if (!words[0].is("clear")) {
        date = isoDate(words[0].text);
        if (!date)
            return "not a date: " + words[0].text + " (YYYY-MM-DD, today or clear)";
    }
    if (Failure failure = needEditor(EditorKind::DTPickerMS2, "date"))
        return failure;
    if (!m_doc.editor.open())
        return std::nullopt;
    if (date)
        m_doc.editor.text = calc::shortDate(*date, m_services.regional);
    else
        document::clearDate(m_doc, m_services);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doMemo(const Words& words) {
    const bool plainText = document::fieldOfColumn(m_doc, m_doc.grd.col()).Type == model::FieldType::Text;
    const int key = plainText ? document::kKeyF2 : document::kKeyBlank;
    if (Failure failure = needModal(EditAction::Open::MemoWindow, key, "memo"))
        return failure;
    if (m_modal.open != EditAction::Open::MemoWindow)
        return std::nullopt;
    if (m_doc.CurrDB20.ReadOnly != 0)
        return "the database is read-only: the memo window takes no text";
    const std::string text = checkedText(words[0].text);
    if (!plainText && text.size() > model::kMemoLength)
        return std::string(kMemoTooLong);
    if (plainText && text.size() > model::kTextLength)
        return tooLongForCell();
    document::acceptMemo(m_doc, m_services, text);
    m_modal = {};
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doToggle(const Words&) {
    if (Failure failure = noModal())
        return failure;
    document::saveCell(m_doc, m_services);
    if (document::fieldOfColumn(m_doc, m_doc.grd.col()).Type != model::FieldType::Checkbox)
        return "this cell is no check box";
    const model::Picture before = m_doc.grd.picture(m_doc.grd.row(), m_doc.grd.col());
    m_user.takeSpoke();
    if (Failure failure = open(document::kKeyBlank))
        return failure;
    const bool flipped = m_doc.grd.picture(m_doc.grd.row(), m_doc.grd.col()) != before;
    return flipped || m_user.takeSpoke() ? Failure() : "this check box cannot be changed";
}

} // namespace tallybook::cli
