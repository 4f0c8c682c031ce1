// A workshop's store: what lies where, what must be ordered, pictures of some of it.
#include "PalmBitmap.h"
#include "SampleBuilder.h"
#include "Samples.h"

#include <charconv>
#include <span>
#include <string_view>

namespace tallybook::samples {

namespace {

using model::FieldType;

// clang-format off
constexpr std::string_view kHammer[] = {
    "      ....          ",
    "   .+*####*+=-:     ",
    "  -#@@@@@@@@@@#+.   ",
    "  *@@@@@@@@@@@@*.   ",
    "  -#@@@@@@@@##*=    ",
    "   .=++%%%-..       ",
    "      .%%%.         ",
    "      .%%%.         ",
    "      .***.         ",
    "      .***.         ",
    "      .***.         ",
    "      .+++.         ",
    "      .+++.         ",
    "      .+++.         ",
    "      .===.         ",
    "       ---          ",
};
constexpr std::string_view kSpanner[] = {
    " -##.   .##-    ",
    "-@@#     #@@-   ",
    "+@@#.   .#@@+   ",
    "-@@@#+++#@@@-   ",
    " -%@@@@@@@%-    ",
    "   =#@@@#=      ",
    "    *@@@*       ",
    "    *@@@*       ",
    "    *%%%*       ",
    "    *%%%*       ",
    "    *%%%*       ",
    "    *###*       ",
    "   =#@@@#=      ",
    "  -@%: :%@-     ",
    "  -@%: :%@-     ",
    "   -#@@@#-      ",
};
constexpr std::string_view kBulb[] = {
    "     .-==-.     ",
    "   -+:    :+-   ",
    "  =:        :=  ",
    " =:  .:--:.  := ",
    " *   -    -   * ",
    " *   -    -   * ",
    " =:  .-  -.  := ",
    "  =.  -  -  .=  ",
    "   -: -  - :-   ",
    "    =.-  -.=    ",
    "    +######+    ",
    "    +@@@@@@+    ",
    "    +######+    ",
    "    -@@@@@@-    ",
    "     +####+     ",
    "      -##-      ",
};
constexpr std::string_view kDrill[] = {
    " .-========-..      ",
    ".#@@@@@@@@@@#===-   ",
    ".#@@%%%%%%@@#+++----",
    ".#@@@@@@@@@@#===-   ",
    " .-==@@@@==-.       ",
    "    +@@@+           ",
    "    +@@@=           ",
    "    +@@@.           ",
    "   .#@@#            ",
    "   :@@@*            ",
    "  .*@@@+            ",
    " .#@@@@#.           ",
    " :%%%%%%:           ",
    " .++++++.           ",
};
constexpr std::string_view kBolt[] = {
    "     .====.     ",
    "   .+######+.   ",
    "  .*@%%%%%%@*.  ",
    "  -#@%%%%%%@#-  ",
    "  .*########*.  ",
    "     -%==%-     ",
    "     -#--#-     ",
    "     -%==%-     ",
    "     -#--#-     ",
    "     -%==%-     ",
    "     -#--#-     ",
    "     -%==%-     ",
    "     -#--#-     ",
    "     -%==%-     ",
    "     .*##*.     ",
    "       ..       ",
};
// clang-format on

struct Item {
    std::string_view category, item, kind, bin, stock, reorder, cost, weight, serial;
    bool fragile;
    std::span<const std::string_view> picture;
    std::string_view checked, details;
};

constexpr Item kItems[] = {
    {"Hand tools", "Claw hammer 16 oz", "Tool", "A1", "6", "2", "11.50", "0.640", "40011", false, kHammer,
     "2/16/2004", "Hickory handle."},
    {"Hand tools", "Ball-peen hammer 8 oz", "Tool", "A1", "2", "2", "9.80", "0.320", "40012", false, kHammer,
     "2/16/2004", ""},
    {"Hand tools", "Wooden mallet", "Tool", "A1", "3", "1", "7.40", "0.480", "", false, {}, "2/16/2004", "Beech."},
    {"Hand tools", "Combination spanner 10 mm", "Tool", "A2", "12", "4", "3.20", "0.060", "41010", false, kSpanner,
     "2/16/2004", ""},
    {"Hand tools", "Combination spanner 13 mm", "Tool", "A2", "3", "4", "3.90", "0.095", "41013", false, kSpanner,
     "2/16/2004", ""},
    {"Hand tools", "Combination spanner 17 mm", "Tool", "A2", "7", "4", "4.60", "0.150", "41017", false, kSpanner,
     "2/16/2004", ""},
    {"Hand tools", "Adjustable spanner 8 in", "Tool", "A2", "4", "2", "12.90", "0.390", "41208", false, kSpanner,
     "2/16/2004", ""},
    {"Hand tools",
     "Screwdriver, slotted 5 mm",
     "Tool",
     "A3",
     "14",
     "5",
     "2.70",
     "0.080",
     "42005",
     false,
     {},
     "2/16/2004",
     ""},
    {"Hand tools",
     "Screwdriver, cross no. 2",
     "Tool",
     "A3",
     "4",
     "5",
     "2.90",
     "0.085",
     "42102",
     false,
     {},
     "2/16/2004",
     "Two were lent to the school."},
    {"Hand tools",
     "Side cutters 160 mm",
     "Tool",
     "A4",
     "5",
     "2",
     "13.30",
     "0.210",
     "43160",
     false,
     {},
     "2/17/2004",
     ""},
    {"Hand tools", "Tape measure 5 m", "Tool", "A4", "9", "3", "6.10", "0.180", "", false, {}, "2/17/2004", ""},
    {"Hand tools",
     "Spirit level 60 cm",
     "Tool",
     "A5",
     "2",
     "1",
     "16.75",
     "0.540",
     "",
     true,
     {},
     "2/17/2004",
     "Handle with care: checked against the master level in January."},
    {"Power tools", "Drill 650 W", "Machine", "B1", "3", "1", "74.00", "1.850", "650113", false, kDrill, "2/17/2004",
     "Keyless chuck.\nSpare brushes in bin B4."},
    {"Power tools", "Cordless drill 12 V", "Machine", "B1", "2", "2", "98.50", "1.420", "120447", false, kDrill,
     "2/17/2004", "Batteries in bin B4."},
    {"Power tools",
     "Jigsaw 500 W",
     "Machine",
     "B2",
     "1",
     "1",
     "59.90",
     "1.960",
     "500238",
     false,
     {},
     "2/17/2004",
     ""},
    {"Power tools",
     "Orbital sander",
     "Machine",
     "B2",
     "1",
     "2",
     "48.00",
     "1.350",
     "220019",
     false,
     {},
     "2/17/2004",
     "One is at the repair shop."},
    {"Power tools",
     "Heat gun 1600 W",
     "Machine",
     "B3",
     "2",
     "1",
     "34.20",
     "0.780",
     "160045",
     false,
     {},
     "2/17/2004",
     ""},
    {"Power tools",
     "Battery 12 V",
     "Spare part",
     "B4",
     "4",
     "4",
     "29.00",
     "0.520",
     "120901",
     false,
     {},
     "2/17/2004",
     ""},
    {"Power tools",
     "Carbon brushes, pair",
     "Spare part",
     "B4",
     "11",
     "6",
     "3.45",
     "0.015",
     "650901",
     false,
     {},
     "2/17/2004",
     ""},
    {"Electrical", "Light bulb 40 W", "Lamp", "C1", "48", "20", "0.60", "0.030", "", true, kBulb, "2/19/2004", ""},
    {"Electrical", "Light bulb 60 W", "Lamp", "C1", "17", "20", "0.60", "0.032", "", true, kBulb, "2/19/2004",
     "Order together with the 40 W ones."},
    {"Electrical", "Light bulb 100 W", "Lamp", "C1", "26", "20", "0.75", "0.036", "", true, kBulb, "2/19/2004", ""},
    {"Electrical", "Halogen lamp 12 V 20 W", "Lamp", "C2", "30", "10", "2.15", "0.022", "", true, kBulb, "2/19/2004",
     "Never touch the glass."},
    {"Electrical", "Fluorescent tube 36 W", "Lamp", "C2", "8", "6", "3.80", "0.190", "", true, {}, "2/19/2004", ""},
    {"Electrical", "Starter S10", "Spare part", "C2", "22", "10", "0.55", "0.008", "", false, {}, "2/19/2004", ""},
    {"Electrical", "Fuse 1 A slow", "Spare part", "C3", "140", "50", "0.18", "0.001", "", false, {}, "2/19/2004", ""},
    {"Electrical",
     "Fuse 6.3 A quick",
     "Spare part",
     "C3",
     "35",
     "50",
     "0.18",
     "0.001",
     "",
     false,
     {},
     "2/19/2004",
     ""},
    {"Electrical",
     "Cable 3 × 1.5 mm², per metre",
     "Material",
     "C4",
     "180",
     "60",
     "0.85",
     "0.135",
     "",
     false,
     {},
     "2/19/2004",
     "Reel is marked every ten metres."},
    {"Electrical",
     "Terminal block, 12 poles",
     "Material",
     "C4",
     "25",
     "10",
     "1.10",
     "0.040",
     "",
     false,
     {},
     "2/19/2004",
     ""},
    {"Electrical", "Extension lead 5 m", "Material", "C5", "6", "3", "8.95", "0.610", "", false, {}, "2/19/2004", ""},
    {"Fixings",
     "Wood screws 4 × 40, box of 200",
     "Material",
     "D1",
     "19",
     "8",
     "5.20",
     "0.730",
     "",
     false,
     {},
     "2/20/2004",
     ""},
    {"Fixings",
     "Wood screws 5 × 60, box of 100",
     "Material",
     "D1",
     "7",
     "8",
     "5.60",
     "0.910",
     "",
     false,
     {},
     "2/20/2004",
     ""},
    {"Fixings", "Hexagon bolts M8 × 50, box of 50", "Material", "D2", "10", "4", "9.30", "1.280", "", false, kBolt,
     "2/20/2004", ""},
    {"Fixings", "Hexagon nuts M8, box of 100", "Material", "D2", "12", "4", "4.40", "0.560", "", false, kBolt,
     "2/20/2004", ""},
    {"Fixings",
     "Washers M8, box of 200",
     "Material",
     "D2",
     "0",
     "4",
     "3.90",
     "0.410",
     "",
     false,
     {},
     "2/20/2004",
     "On order since the 9th."},
    {"Fixings",
     "Wall plugs 8 mm, box of 100",
     "Material",
     "D3",
     "15",
     "6",
     "2.95",
     "0.120",
     "",
     false,
     {},
     "2/20/2004",
     ""},
    {"Fixings", "Nails 70 mm, per kg", "Material", "D3", "9", "5", "2.40", "1.000", "", false, {}, "2/20/2004", ""},
    {"Fixings",
     "Threaded rod M10, 1 m",
     "Material",
     "D4",
     "16",
     "5",
     "2.20",
     "0.500",
     "",
     false,
     {},
     "2/20/2004",
     ""},
    {"Consumables",
     "Wood glue 750 g",
     "Material",
     "E1",
     "5",
     "3",
     "6.80",
     "0.800",
     "",
     false,
     {},
     "2/20/2004",
     "Use before 2005."},
    {"Consumables",
     "Sandpaper grain 120, sheet",
     "Material",
     "E1",
     "64",
     "25",
     "0.45",
     "0.020",
     "",
     false,
     {},
     "2/20/2004",
     ""},
    {"Consumables",
     "Masking tape 50 m",
     "Material",
     "E2",
     "21",
     "10",
     "1.95",
     "0.160",
     "",
     false,
     {},
     "2/20/2004",
     ""},
    {"Consumables",
     "Machine oil 100 ml",
     "Material",
     "E2",
     "2",
     "3",
     "3.25",
     "0.110",
     "",
     false,
     {},
     "2/20/2004",
     ""},
};

int number(std::string_view text) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// "Order" in red while there is less in stock than there should be.
model::CondExprDef orderWhenBelow(int stock, int reorder) {
    model::CondExprDef condition;
    condition.Name = "Order";
    condition.CondFields = {static_cast<std::uint8_t>(stock), static_cast<std::uint8_t>(reorder), 0};
    condition.CondOps[0] = '<';
    condition.TrueKind = 1;
    condition.TrueText = "Order";
    condition.FalseKind = 2;
    condition.FalseText = "enough";
    return condition;
}
constexpr std::uint32_t kRed = 0xFF;
constexpr std::uint32_t kGreen = 0xFF00;

} // namespace

platform::Bytes inventory() {
    SampleBuilder sample("MS2_Inventory");
    sample.setCategories({"Hand tools", "Power tools", "Electrical", "Fixings", "Consumables"});
    const int item = sample.addField(FieldType::Text, "Item");
    const int kind = sample.addField(FieldType::List, "Kind");
    const int bin = sample.addField(FieldType::Text, "Bin");
    const int stock = sample.addField(FieldType::Integer, "In stock");
    const int reorder = sample.addField(FieldType::Integer, "Reorder at");
    const int state = sample.addField(FieldType::ConditionalExpression, "State");
    const int cost = sample.addField(FieldType::Float, "Unit cost");
    const int weight = sample.addField(FieldType::Float, "Weight (kg)");
    const int serial = sample.addField(FieldType::Long, "Serial");
    const int fragile = sample.addField(FieldType::Checkbox, "Fragile");
    const int picture = sample.addField(FieldType::Image, "Picture");
    const int checked = sample.addField(FieldType::Date, "Checked");
    const int details = sample.addField(FieldType::Memo, "Details");
    const int key = sample.addField(FieldType::Key, "Key");
    sample.addItems(kind, {"Tool", "Machine", "Spare part", "Lamp", "Material"});
    sample.field(details).AutoWriter = 2;
    sample.addItems(details, {"On order.", "Lent out.", "At the repair shop.", "Handle with care."});
    sample.field(item).SearchField = 1;
    sample.field(item).FieldFlags = 0x80; // read by the barcode scanner
    sample.field(stock).IncDec = 1;
    sample.field(cost).Decimals = 2;
    sample.field(weight).Decimals = 3;
    sample.field(checked).Default = "U";
    sample.field(picture).Decimals = 1;
    sample.database().CondExprs[state] = orderWhenBelow(stock, reorder);

    for (const Item& entry : kItems) {
        const bool order = number(entry.stock) < number(entry.reorder);
        sample.addRecord(entry.category);
        sample.set(item, entry.item);
        sample.setItem(kind, entry.kind);
        sample.set(bin, entry.bin);
        sample.set(stock, entry.stock);
        sample.set(reorder, entry.reorder);
        sample.set(state, order ? "Order" : "enough");
        sample.setColour(state, order ? kRed : kGreen);
        sample.set(cost, entry.cost);
        sample.set(weight, entry.weight);
        sample.set(serial, entry.serial);
        sample.check(fragile, entry.fragile);
        if (!entry.picture.empty())
            sample.setPicture(picture, greyBitmap(entry.picture));
        sample.set(checked, entry.checked);
        sample.set(details, entry.details);
    }
    static_cast<void>(key); // filled with each record

    sample.addView("Stock", {item, bin, stock, reorder, state}, item);
    sample.addView("Value", {item, stock, cost}, cost);
    sample.addFilter("To order", {{state, '=', "Order"}});
    sample.addFilter("Fragile", {{fragile, '=', "1"}});
    sample.addFilter("Heavy tools", {{kind, '=', "Tool"}, {weight, 'J', "0.5"}});
    sample.addForm({item, kind, bin, stock, reorder, state, cost, weight, serial, fragile, picture, details});
    return sample.build();
}

} // namespace tallybook::samples
