#include "core/print/PageSetup.h"

#include "core/calc/values/Numbers.h"

#include <optional>

namespace tallybook::print {

namespace {

struct MarginRule {
    std::string_view name;
    double least = 0;
    std::string_view leastText;
    int most = 0;
};

MarginRule ruleOf(Side side) {
    switch (side) {
    case Side::Top:
        return {"top", 0.5, "0.50", 4};
    case Side::Bottom:
        return {"bottom", 0.5, "0.50", 4};
    case Side::Left:
        return {"left", 0.25, "0.25", 3};
    case Side::Right:
        break;
    }
    return {"right", 0.25, "0.25", 3};
}

bool isSet(std::string_view flag) {
    return calc::val(flag) == 1;
}

std::string flagText(bool set) {
    return set ? "1" : "0";
}

std::optional<double> readMargin(std::string_view text, const platform::Regional& regional) {
    if (const std::optional<double> number = calc::parseNumber(text, regional))
        return number;
    return calc::parseNumber(text, platform::Regional{});
}

double marginOf(Side side, std::string_view text, const platform::Regional& regional) {
    const MarginRule rule = ruleOf(side);
    const std::optional<double> inches = readMargin(text, regional);
    return inches && *inches >= rule.least && *inches <= rule.most ? *inches : marginAt(Margins{}, side);
}

} // namespace

double& marginAt(Margins& margins, Side side) {
    switch (side) {
    case Side::Top:
        return margins.top;
    case Side::Bottom:
        return margins.bottom;
    case Side::Left:
        return margins.left;
    case Side::Right:
        break;
    }
    return margins.right;
}

double marginAt(const Margins& margins, Side side) {
    Margins copy = margins;
    return marginAt(copy, side);
}

PageSetup setupOf(const PrintSpec& spec, const platform::Regional& regional) {
    PageSetup setup;
    const std::optional<std::int32_t> paper = calc::toInt32(spec.Paper, {});
    if (paper && *paper >= 0 && *paper < static_cast<int>(kPapers.size()))
        setup.paper = *paper;
    setup.portrait = spec.Portrait.empty() || isSet(spec.Portrait);
    setup.margins.top = marginOf(Side::Top, spec.TopMargin, regional);
    setup.margins.bottom = marginOf(Side::Bottom, spec.BottomMargin, regional);
    setup.margins.left = marginOf(Side::Left, spec.LeftMargin, regional);
    setup.margins.right = marginOf(Side::Right, spec.RightMargin, regional);
    setup.title = spec.Title;
    setup.fileName = isSet(spec.FileName);
    setup.date = isSet(spec.Date);
    setup.pageNumber = isSet(spec.PageNumber);
    setup.recordNumber = isSet(spec.RecordNumber);
    setup.gridLines = isSet(spec.GridLines);
    setup.memo = isSet(spec.Memo);
    return setup;
}

void storeSetup(const PageSetup& setup, PrintSpec& spec, const platform::Regional& regional) {
    spec.Paper = std::to_string(setup.paper);
    spec.Portrait = flagText(setup.portrait);
    spec.TopMargin = marginText(setup.margins.top, regional);
    spec.BottomMargin = marginText(setup.margins.bottom, regional);
    spec.LeftMargin = marginText(setup.margins.left, regional);
    spec.RightMargin = marginText(setup.margins.right, regional);
    spec.Title = setup.title;
    spec.FileName = flagText(setup.fileName);
    spec.Date = flagText(setup.date);
    spec.PageNumber = flagText(setup.pageNumber);
    spec.RecordNumber = flagText(setup.recordNumber);
    spec.GridLines = flagText(setup.gridLines);
    spec.Memo = flagText(setup.memo);
}

CheckedMargin checkMargin(Side side, std::string_view text, const platform::Regional& regional) {
    const MarginRule rule = ruleOf(side);
    const std::optional<double> inches = calc::parseNumber(text, regional);
    if (!inches)
        return {};
    const std::string start = "The " + std::string(rule.name) + " margin can not be ";
    if (*inches < rule.least)
        return {rule.least, start + "less than " + std::string(rule.leastText) + " inches."};
    if (*inches > rule.most)
        return {static_cast<double>(rule.most), start + "more than " + std::to_string(rule.most) + " inches."};
    return {*inches, {}};
}

std::string marginText(double inches, const platform::Regional& regional) {
    return calc::formatDecimals(inches, 2, regional);
}

} // namespace tallybook::print
