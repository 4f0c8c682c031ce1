// The designers' operations as the error dialog names them. The windows give each handler its tag.
#pragma once

#include <string_view>

namespace tallybook::design::tags {

inline constexpr std::string_view kFieldLoading = "Field Properties : Loading";
inline constexpr std::string_view kFieldAttributes = "Field Properties : Fill Attributes (Procedure)";
inline constexpr std::string_view kFieldValues = "Field Properties : Fill Attribute Values (Procedure)";
inline constexpr std::string_view kFieldType = "Field Properties : Field Type";
inline constexpr std::string_view kFieldDefault = "Field Properties : Default";
inline constexpr std::string_view kFieldListItems = "Field Properties : List Items";
inline constexpr std::string_view kFieldAutoWriter = "Field Properties : Auto Writer";
inline constexpr std::string_view kFieldAddToList = "Field Properties : Add To List";
inline constexpr std::string_view kFieldRemoveFromList = "Field Properties : Remove From List";
inline constexpr std::string_view kFieldFormat = "Field Properties : Show Format (Procedure)";
inline constexpr std::string_view kFieldClearExpression = "Field Properties : Clear Expression";
inline constexpr std::string_view kFieldSource = "Field Properties : External Database";
inline constexpr std::string_view kFieldCondition = "Field Properties : Condition";
inline constexpr std::string_view kFieldOk = "Field Properties : OK";

inline constexpr std::string_view kFilterLoading = "Filter Designer: Loading";
inline constexpr std::string_view kFilterOk = "Filter Designer: Ok";
inline constexpr std::string_view kFilterDefinition = "Filter Designer: CurrentDefinition";

inline constexpr std::string_view kViewLoading = "View Designer : Loading";
inline constexpr std::string_view kViewFieldList = "View Designer : Field ListType";
inline constexpr std::string_view kViewSortList = "View Designer : Sort ListType";
inline constexpr std::string_view kViewViewList = "View Designer : View ListType";
inline constexpr std::string_view kViewAdd = "View Designer : Add View";
inline constexpr std::string_view kViewRemove = "View Designer : Remove View";
inline constexpr std::string_view kViewClear = "View Designer : Clear View";
inline constexpr std::string_view kViewUp = "View Designer : Up View";
inline constexpr std::string_view kViewDown = "View Designer : Down View";
inline constexpr std::string_view kViewSave = "View Designer : Save View";
inline constexpr std::string_view kViewCancel = "View Designer : Cancel";
inline constexpr std::string_view kViewShowAll = "View Designer : Show All Fields";
inline constexpr std::string_view kViewResetAll = "View Designer : Reset All";
inline constexpr std::string_view kViewGridClick = "View Designer : Grid_click";
inline constexpr std::string_view kViewSaveView = "View Designer : SaveView Procedure";
inline constexpr std::string_view kViewResetGrid = "View Designer : ResetGrid Procedure";
inline constexpr std::string_view kViewFieldNo = "View Designer : GetFieldNo";
inline constexpr std::string_view kViewRename = "View Designer : RenameView Procedure";
inline constexpr std::string_view kViewGridScroll = "View Designer : Grid Scroll";

inline constexpr std::string_view kPropertiesLoading = "DB Properties : Loading";
inline constexpr std::string_view kPropertiesUser = "DB Properties : User";
inline constexpr std::string_view kPropertiesSearch = "DB Properties : Search";
inline constexpr std::string_view kPropertiesStartup = "DB Properties : Startup";
inline constexpr std::string_view kPropertiesOk = "DB Properties : OK";
inline constexpr std::string_view kPropertiesCancel = "DB Properties : Cancel";

inline constexpr std::string_view kListAdd = "ListEditorAdd";
inline constexpr std::string_view kListEdit = "ListEditorEdit";
inline constexpr std::string_view kListDelete = "ListEditorDelete";
inline constexpr std::string_view kListSort = "ListEditorSort";
inline constexpr std::string_view kListUp = "ListEditorUp";
inline constexpr std::string_view kListDown = "ListEditorDown";
inline constexpr std::string_view kListOk = "ListEditorOK";
inline constexpr std::string_view kAutoWriterOk = "Auto Writer : OK";
inline constexpr std::string_view kRadioOk = "Radio Button : OK";
inline constexpr std::string_view kMemoTextOk = "Edit Memo/Text : OK";

} // namespace tallybook::design::tags
