// The one editor that may be open over a cell, and what it holds at the moment.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::model {

enum class EditorKind : std::uint8_t { None, Text1, MebSpin, cmb1, DTPickerMS2 };

// A window copies its widget's content in before it lets an operation look, and shows it again afterwards.
struct EditorState {
    EditorKind kind = EditorKind::None;
    int row = 0; // grid cell that is being edited
    int col = 0;
    std::string text;         // of Text1, MebSpin and DTPickerMS2
    bool allSelected = false; // at the start: the next key replaces the text
    bool rightAligned = false;
    std::int32_t spin = 0; // value of UpDown1
    std::int32_t spinMin = 0;
    std::int32_t spinMax = 0;
    std::vector<std::string> entries; // of cmb1
    int entry = 0;                    // chosen, from 0

    bool open() const { return kind != EditorKind::None; }
};

} // namespace tallybook::model
