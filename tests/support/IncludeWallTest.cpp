#include "support/IncludeWall.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tallybook::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(IncludeWall, holdsInOurSources) {
    EXPECT_THAT(faultsBelow(std::filesystem::path(TALLYBOOK_SOURCE_DIR) / "src"), IsEmpty());
}

TEST(IncludeWall, findsEveryIncludeAndNoneInComments) {
    const std::string text = "// #include \"core/shell/A.h\"\n"
                             "#include \"core/model/B.h\"\n"
                             "/* #include <QString>\n"
                             "#include <QList> */\n"
                             "  #  include <vector> // why\n"
                             "#define include 1\n"
                             "#include\"C.h\"";
    EXPECT_THAT(includesOf(text), ElementsAre(Include{2, false, "core/model/B.h"}, Include{5, true, "vector"},
                                              Include{7, false, "C.h"}));
}

struct WallCase {
    const char* file;
    Include include;
    const char* fault; // a part of it; empty when the include is right
};

TEST(IncludeWall, judgesEachInclude) {
    const WallCase cases[] = {
        {"core/model/A.h", {1, true, "vector"}, ""},
        {"core/model/A.h", {1, false, "core/model/B.h"}, ""},
        {"core/model/A.h", {1, false, "core/platform/B.h"}, "stands above"},
        {"core/platform/A.h", {1, false, "core/model/B.h"}, ""},
        {"core/platform/A.h", {1, false, "core/calc/B.h"}, "stands above"},
        {"core/calc/A.h", {1, false, "core/pdb/B.h"}, "stands above"},
        {"core/calc/values/A.cpp", {1, false, "core/calc/values/B.h"}, ""},
        {"core/calc/conditions/A.cpp", {1, false, "core/calc/cells/B.h"}, ""},
        {"core/calc/values/A.cpp", {1, false, "core/calc/cells/B.h"}, "stands above"},
        {"core/pdb/A.cpp", {1, false, "core/calc/B.h"}, ""},
        {"core/pdb/A.cpp", {1, false, "core/document/B.h"}, "stands above"},
        {"core/document/A.cpp", {1, false, "core/pdb/B.h"}, ""},
        {"core/document/A.cpp", {1, false, "core/handheld/B.h"}, "stands above"},
        {"core/handheld/A.cpp", {1, false, "core/forms/B.h"}, "stands above"},
        {"core/forms/A.cpp", {1, false, "core/design/B.h"}, "stands above"},
        {"core/design/A.cpp", {1, false, "core/print/B.h"}, "stands above"},
        {"core/print/A.cpp", {1, false, "core/convert/B.h"}, "stands above"},
        {"core/convert/A.cpp", {1, false, "core/shell/B.h"}, "stands above"},
        {"core/shell/A.cpp", {1, false, "core/convert/B.h"}, ""},
        {"core/shell/A.cpp", {1, false, "desktop/frmMain.h"}, "from outside"},
        {"core/shell/A.cpp", {1, false, "adapters/B.h"}, "from outside"},
        {"core/shell/A.cpp", {1, false, "B.h"}, "from outside"},
        {"core/shell/A.cpp", {1, false, "core/cellar/B.h"}, "no room"},
        {"core/cellar/A.cpp", {1, false, "core/model/B.h"}, "no room"},
        {"core/calc/A.cpp", {1, true, "QString"}, "no Qt"},
        {"core/calc/A.cpp", {1, true, "QtCore/QString"}, "no Qt"},
        {"core/calc/A.cpp", {1, false, "QString"}, "no Qt"},
        {"core/calc/A.cpp", {1, true, "unistd.h"}, "standard library alone"},
        {"core/calc/A.cpp", {1, true, "nlohmann/json.hpp"}, "standard library alone"},
        {"adapters/A.cpp", {1, true, "unistd.h"}, ""},
        {"adapters/A.cpp", {1, false, "core/shell/B.h"}, ""},
        {"adapters/A.cpp", {1, false, "desktop/B.h"}, "not for adapters/"},
        {"adapters/A.cpp", {1, true, "QFile"}, "have Qt"},
        {"cli/main.cpp", {1, false, "adapters/B.h"}, ""},
        {"cli/Program.cpp", {1, false, "cli/verbs/B.h"}, ""},
        {"cli/frame/A.cpp", {1, false, "cli/verbs/B.h"}, "stands above"},
        {"cli/frame/A.cpp", {1, false, "cli/Program.h"}, "stands above"},
        {"desktop/platform/A.cpp", {1, false, "desktop/dialogs/B.h"}, "stands above"},
        {"cli/main.cpp", {1, true, "CLI/CLI.hpp"}, ""},
        {"cli/main.cpp", {1, false, "desktop/frmMain.h"}, "not for cli/"},
        {"cli/main.cpp", {1, true, "QString"}, "have Qt"},
        {"desktop/frmMain.cpp", {1, true, "QMainWindow"}, ""},
        {"desktop/frmMain.cpp", {1, false, "ui_frmMain.h"}, ""},
        {"desktop/frmMain.cpp", {1, false, "core/shell/B.h"}, ""},
        {"desktop/frmMain.cpp", {1, false, "cli/B.h"}, "not for desktop/"},
        {"desktop/frmMain.cpp", {1, false, "app/B.h"}, "not for desktop/"},
        {"app/main.cpp", {1, false, "desktop/frmMain.h"}, ""},
        {"app/main.cpp", {1, false, "cli/B.h"}, "not for app/"},
    };
    for (const WallCase& row : cases) {
        const std::string fault = faultOfInclude(row.file, row.include);
        SCOPED_TRACE(std::string(row.file) + " includes " + row.include.name);
        if (*row.fault == 0)
            EXPECT_EQ(fault, "");
        else
            EXPECT_THAT(fault, HasSubstr(row.fault));
    }
}

// A made-up tree with one arrow up, one Qt header in the core and one reach for the windows from below.
class MadeUpTree : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::remove_all(m_root);
        write("core/model/Grid.h", "#pragma once\n#include <vector>\n#include \"core/calc/Dates.h\"\n");
        write("core/calc/Dates.h", "#include \"core/model/Grid.h\"\n");
        write("core/calc/Dates.cpp", "#include \"core/calc/Dates.h\"\n\n#include <QDate>\n");
        write("cli/main.cpp", "#include \"desktop/frmMain.h\"\n");
        write("desktop/frmMain.h", "#include <QMainWindow>\n#include \"core/calc/Dates.h\"\n");
        write("desktop/notes.txt", "#include \"cli/main.cpp\"\n");
    }
    void TearDown() override { std::filesystem::remove_all(m_root); }

    void write(const std::string& file, const std::string& text) {
        const std::filesystem::path path = m_root / file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    std::filesystem::path m_root = std::filesystem::path(testing::TempDir()) / "include-wall-tree";
};

TEST_F(MadeUpTree, showsExactlyItsThreeFaultsWithTheirLines) {
    EXPECT_THAT(faultsBelow(m_root), ElementsAre("cli/main.cpp:1: desktop/frmMain.h is not for cli/",
                                                 "core/calc/Dates.cpp:3: the core has no Qt, but includes QDate",
                                                 "core/model/Grid.h:3: core/calc/Dates.h stands above"));
}

} // namespace
} // namespace tallybook::test
