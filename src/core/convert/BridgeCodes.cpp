#include "core/convert/BridgeCodes.h"

#include <algorithm>
#include <array>

namespace tallybook::convert {

namespace {

struct CodeText {
    BridgeCode code;
    std::string_view text;
};

constexpr std::array kTexts = {
    CodeText{BridgeCode::UnresolvedExpression, "Unresolved Expression Format"},
    CodeText{BridgeCode::CannotOpen, "Could not open file"},
    CodeText{BridgeCode::MemoTooLong, "A memo field may not have more than 4096 characters"},
    CodeText{BridgeCode::WrongFieldCount, "Inappropriate number of fields in input text file."},
    CodeText{BridgeCode::NoCategoriesName, "Importing categories requires 'Categories' field name"},
    CodeText{BridgeCode::InvalidType, "Invalid type specified."},
    CodeText{BridgeCode::CategoriesNoList, "Categories field type must of type 'list'"},
    CodeText{BridgeCode::WrongDataType, "Importing inappropriate data type into field."},
    CodeText{BridgeCode::IntegerTooLarge,
             "Attempt to assign a value greater than 32767 or smaller than -32768 to an integer data type."},
    CodeText{BridgeCode::HasJoins,
             "Tallybooks with field types DB Join or DB Lookup cannot be exported or imported."},
    CodeText{BridgeCode::InvalidTime, "Invalid Time Format"},
    CodeText{BridgeCode::DataWithoutField, "Data in field without field type"},
    CodeText{BridgeCode::TooManyFields, "Number of fields exceed limit"},
    CodeText{BridgeCode::InvalidArgument, "Invalid argument"},
    CodeText{BridgeCode::OutputOpen, "Output file is open"},
    CodeText{BridgeCode::OutputExists, "Output file already exists"},
    CodeText{BridgeCode::ListFull,
             "Attempt to import a list field type (or categories) with more than 255 unique items."},
    CodeText{BridgeCode::Unspecified, "Unspecified Error"},
    CodeText{BridgeCode::InvalidListIndex, "Invalid list index, Verify the database"},
};

} // namespace

std::string_view bridgeText(int number) {
    const auto found = std::find_if(kTexts.begin(), kTexts.end(),
                                    [&](const CodeText& entry) { return numberOf(entry.code) == number; });
    return found == kTexts.end() ? "Unknown error" : found->text;
}

} // namespace tallybook::convert
