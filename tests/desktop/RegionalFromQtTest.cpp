#include "desktop/platform/RegionalFromQt.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace tallybook::desktop {
namespace {

using platform::DateOrder;

struct Case {
    const char* locale;
    const char* shortDate;
    const char* longTime;
    DateOrder order;
    char separator;
    bool twelveHours;
    char decimal;
    char group;
    const char* currency;
};

// Patterns with quoted words, without a year of four digits, with dots behind the year, with letters for months.
constexpr Case kCases[] = {
    {"en_US", "M/d/yyyy", "h:mm:ss tt", DateOrder::MDY, '/', true, '.', ',', "$"},
    {"en_GB", "dd/MM/yyyy", "HH:mm:ss", DateOrder::DMY, '/', false, '.', ',', "\xA3"},
    {"en_AU", "d/M/yyyy", "h:mm:ss tt", DateOrder::DMY, '/', true, '.', ',', "$"},
    {"de_DE", "dd.MM.yyyy", "HH:mm:ss", DateOrder::DMY, '.', false, ',', '.', "\x80"},
    {"sv_SE", "yyyy-MM-dd", "HH:mm:ss", DateOrder::YMD, '-', false, ',', '.', "kr"},
    {"es_ES", "d/M/yyyy", "H:mm:ss", DateOrder::DMY, '/', false, ',', '.', "\x80"},
    {"hu_HU", "yyyy.MM.dd", "H:mm:ss", DateOrder::YMD, '.', false, ',', '.', "Ft"},
    {"bg_BG", "d.MM.yyyy", "H:mm:ss", DateOrder::DMY, '.', false, ',', '.', ""},
    {"da_DK", "dd.MM.yyyy", "HH:mm:ss", DateOrder::DMY, '.', false, ',', '.', "kr."},
    {"C", "M/d/yyyy", "HH:mm:ss", DateOrder::MDY, '/', false, '.', ',', ""},
};

class RegionalFromQt : public testing::TestWithParam<Case> {};

TEST_P(RegionalFromQt, givesTheCoresSettings) {
    const Case& expected = GetParam();
    const platform::Regional regional = regionalFrom(QLocale(QString::fromLatin1(expected.locale)));
    EXPECT_EQ(regional.shortDate, expected.shortDate);
    EXPECT_EQ(regional.longTime, expected.longTime);
    EXPECT_EQ(regional.dateOrder, expected.order);
    EXPECT_EQ(regional.dateSeparator, expected.separator);
    EXPECT_EQ(regional.timeSeparator, ':');
    EXPECT_EQ(regional.twelveHours, expected.twelveHours);
    EXPECT_EQ(regional.decimal, expected.decimal);
    EXPECT_EQ(regional.group, expected.group);
    EXPECT_EQ(regional.currency, expected.currency);
}

INSTANTIATE_TEST_SUITE_P(Locales, RegionalFromQt, testing::ValuesIn(kCases),
                         [](const auto& instance) { return std::string(instance.param.locale); });

TEST(RegionalTexts, areEnglishWhereACharacterHasNoByte) {
    const platform::Regional russian = regionalFrom(QLocale(QStringLiteral("ru_RU")));
    EXPECT_EQ(russian.monthNames[0], "January");
    EXPECT_EQ(russian.monthAbbrevs[4], "May");
    const platform::Regional german = regionalFrom(QLocale(QStringLiteral("de_DE")));
    EXPECT_EQ(german.monthNames[2], "M\xE4rz");
}

TEST(RegionalTexts, takeANoBreakSpaceAsABlank) {
    const platform::Regional spanish = regionalFrom(QLocale(QStringLiteral("es_ES")));
    EXPECT_EQ(spanish.am, "a. m.");
    EXPECT_EQ(spanish.pm, "p. m.");
}

} // namespace
} // namespace tallybook::desktop
