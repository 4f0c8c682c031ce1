#include "core/shell/Version.h"

#include <gtest/gtest.h>

namespace tallybook::shell {
namespace {

TEST(Version, buildHasThreeDigitsWithLeadingZeros) {
    struct Case {
        VersionNumbers version;
        std::string_view text;
    };
    const Case cases[] = {
        {{1, 0, 1}, "Version 1.0 (001)"},       {{2, 1, 23}, "Version 2.1 (023)"},
        {{10, 20, 456}, "Version 10.20 (456)"}, {{1, 0, 1234}, "Version 1.0 (1234)"},
        {{0, 0, 0}, "Version 0.0 (000)"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(versionText(one.version), one.text);
}

TEST(Version, programKnowsTheNumbersThatItWasBuiltWith) {
    EXPECT_GE(programVersion().major, 1);
}

} // namespace
} // namespace tallybook::shell
