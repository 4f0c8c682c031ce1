// What the command says when the computer has nothing left to give.
#include "cli/Program.h"

#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <ostream>
#include <sstream>
#include <streambuf>

namespace tallybook::cli {
namespace {

// An output whose every character asks for memory that is not there.
class NoMemory : public std::streambuf {
protected:
    int_type overflow(int_type) override { throw std::bad_alloc(); }
    std::streamsize xsputn(const char*, std::streamsize) override { throw std::bad_alloc(); }
};

TEST(Program, saysForWhatThereIsNotEnoughMemory) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const std::string file = test.path("MS2_Small.pdb").string();
    const std::vector<std::vector<std::string>> calls = {
        {"info", file}, {"cells", "--csv", file},       {"find", "--case", file, "Second"},
        {"dump", file}, {"expr", "check", file, "1+1"},
    };
    for (const std::vector<std::string>& call : calls) {
        NoMemory none;
        std::istringstream in;
        std::ostream out(&none);
        out.exceptions(std::ios::badbit); // which lets the exception of the buffer through
        std::ostringstream err;
        Terminal terminal(in, out, err, false);
        EXPECT_EQ(run(call, terminal), ExitCode::Refused) << call[0];
        EXPECT_THAT(err.str(), testing::EndsWith(": There is not enough memory for \"" + file + "\".\n")) << call[0];
    }
}

} // namespace
} // namespace tallybook::cli
