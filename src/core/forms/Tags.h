// The operations of the form designer and the picture dialog, as the error dialog names them.
#pragma once

#include <string_view>

namespace tallybook::forms::tags {

inline constexpr std::string_view kLoading = "Form Designer : Loading";
inline constexpr std::string_view kQuit = "Form Designer : Quit";
inline constexpr std::string_view kSave = "Form Designer : Save Form";
inline constexpr std::string_view kClearForm = "Form Designer : Clear Form";
inline constexpr std::string_view kTextColour = "Form Designer : Select Text color";
inline constexpr std::string_view kBackColour = "Form Designer : Select Back color";
inline constexpr std::string_view kSelectPosition = "Form Designer : Select Position";
inline constexpr std::string_view kPopupHelp = "Form Designer : Popup Help";
inline constexpr std::string_view kSplitter = "Form Designer : Splitter Positioning";
inline constexpr std::string_view kLabelOnForm = "Form Designer : Add/Edit Label on Form";
inline constexpr std::string_view kLabelOnTab = "Form Designer : Add/Edit Label on Tab";
inline constexpr std::string_view kDrop = "Form Designer : Drag and Drop (drop)";
inline constexpr std::string_view kClearOnForm = "Form Designer : Popup Menu to Clear Field on Form";
inline constexpr std::string_view kPickField = "Form Designer : Pick Field to Paste on Form";
inline constexpr std::string_view kRemoveField = "Form Designer : Remove field";
inline constexpr std::string_view kSliderChange = "Form Designer : Slider2 change";
inline constexpr std::string_view kUpDown2 = "Form Designer : UpDown2 Click";
inline constexpr std::string_view kSelectTab = "Form Designer : Select Tab";
inline constexpr std::string_view kTabName = "Form Designer : Edit Tab Name";
inline constexpr std::string_view kRemoveTabs = "Form Designer : Remove Tabs";
inline constexpr std::string_view kAddTabs = "Form Designer : Add Tabs";
inline constexpr std::string_view kEditValue = "Form Designer : Edit Value (Procedure)";
inline constexpr std::string_view kSetValue = "Form Designer : Set Value (Procedure)";
inline constexpr std::string_view kShowValues = "Form Designer : Show Values";

inline constexpr std::string_view kImageLoad = "Form Image : Load";
inline constexpr std::string_view kImageEdit = "Form Image : Edit";
inline constexpr std::string_view kImageUpdate = "Form Image : Update";
inline constexpr std::string_view kImageImport = "Form Image : cmdImport_Click";
inline constexpr std::string_view kImageSave = "Form Image : cmdSave_Click";
inline constexpr std::string_view kImageCancel = "Form Image : Cancel";

} // namespace tallybook::forms::tags
