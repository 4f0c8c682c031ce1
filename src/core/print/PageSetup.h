// How a page is set up: paper, margins, and what is printed beside the cells.
#pragma once

#include "core/platform/Regional.h"
#include "core/print/PrintSpecs.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::print {

inline constexpr double kPointsAnInch = 72;

// A row of the list CmbPaper. Sizes are of the upright sheet, in points.
struct Paper {
    std::string_view text;
    int code = 0; // the printer's number of the paper
    double width = 0;
    double height = 0;
};
inline constexpr std::array kPapers = {
    Paper{"A4 8.27\" by 11.29\"", 9, 210 / 25.4 * kPointsAnInch, 297 / 25.4 * kPointsAnInch},
    Paper{"Letter 8.5\" by 11\"", 1, 8.5 * kPointsAnInch, 11 * kPointsAnInch},
    Paper{"Legal 8.5\" by 14\"", 5, 8.5 * kPointsAnInch, 14 * kPointsAnInch},
};
inline constexpr int kPortraitCode = 1;
inline constexpr int kLandscapeCode = 2;

// The list CmbZoom, and where it starts.
struct Zoom {
    std::string_view text;
    int percent = 0;
};
inline constexpr std::array kZooms = {
    Zoom{" 25%", 25}, Zoom{" 50%", 50}, Zoom{" 75%", 75}, Zoom{"100%", 100}, Zoom{"200%", 200},
};
inline constexpr int kFirstZoom = 3;

// Inches.
struct Margins {
    double top = 0.5;
    double bottom = 0.5;
    double left = 0.5;
    double right = 0.5;

    bool operator==(const Margins&) const = default;
};

struct PageSetup {
    int paper = 0; // position in kPapers
    bool portrait = true;
    Margins margins;
    std::string title;
    bool fileName = false;
    bool date = false;
    bool pageNumber = false;
    bool recordNumber = false;
    bool gridLines = false;
    bool memo = false; // memos and other long texts in full
    bool fit = false;  // the columns scaled to the width of one page; kept in our own settings, not in a PrintSpec

    bool operator==(const PageSetup&) const = default;
};

// What a remembered setup says; a value that makes no sense is the default. A margin is read with the region's
// decimal sign or a point.
PageSetup setupOf(const PrintSpec& spec, const platform::Regional& regional);

// Puts a setup into its remembered form, the key left as it is.
void storeSetup(const PageSetup& setup, PrintSpec& spec, const platform::Regional& regional);

// The margins in the order in which they are checked.
enum class Side : std::uint8_t { Left, Right, Bottom, Top };
inline constexpr std::array kSides = {Side::Left, Side::Right, Side::Bottom, Side::Top};

double& marginAt(Margins& margins, Side side);
double marginAt(const Margins& margins, Side side);

// What becomes of a typed margin: inches that are allowed, and the message of a value out of range, which takes the
// limit that was broken. What is no number becomes half an inch without a word.
struct CheckedMargin {
    double inches = 0.5;
    std::string message; // empty: nothing to say
};
CheckedMargin checkMargin(Side side, std::string_view text, const platform::Regional& regional);

// A margin as its box shows it: two decimals and the region's decimal sign.
std::string marginText(double inches, const platform::Regional& regional);

} // namespace tallybook::print
