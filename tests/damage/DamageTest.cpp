// Systematic damage: whatever is done to a file's bytes, it opens into something that can be saved, or it is
// refused with a reason.

#include "ReaderProbe.h"
#include "SmallDatabase.h"
#include "support/OlderFile.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace tallybook::test {
namespace {

namespace fs = std::filesystem;
using fuzz::probeReader;
using platform::Bytes;

constexpr std::size_t kEveryPlaceUpTo = 6 * 1024; // larger files are damaged at some places only
constexpr std::size_t kPlacesOfLarger = 400;

struct Victim {
    std::string name;
    Bytes bytes;
    fuzz::ProbeResult (*probe)(platform::ByteSpan file) = probeReader;

    // How far apart the damaged places lie: 1 for a small file, else an odd number, so that both halves of words
    // and all columns of the tables are met.
    std::size_t stride() const { return bytes.size() <= kEveryPlaceUpTo ? 1 : (bytes.size() / kPlacesOfLarger) | 1; }
};

void PrintTo(const Victim& victim, std::ostream* out) {
    *out << victim.name;
}

Bytes bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Victim> victims() {
    std::vector<Victim> all = {{"small", fuzz::smallDatabase()},
                               {"older", smallOlder().bytes(), fuzz::probeOlder},
                               {"oldest", smallOldest().bytes(), fuzz::probeOlder}};
    std::vector<fs::path> samples;
    for (const auto& entry : fs::directory_iterator(fs::path(TALLYBOOK_SOURCE_DIR) / "samples"))
        if (entry.path().extension() == ".pdb")
            samples.push_back(entry.path());
    std::sort(samples.begin(), samples.end());
    for (const fs::path& path : samples)
        all.push_back({path.stem().string(), bytesOf(path)});
    return all;
}

std::string nameOf(const testing::TestParamInfo<Victim>& info) {
    std::string name = info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

class Damage : public testing::TestWithParam<Victim> {
protected:
    void tryIt(const Bytes& bytes, const std::string& what) {
        const fuzz::ProbeResult result = GetParam().probe(bytes);
        EXPECT_EQ(result.complaint, "") << what;
        EXPECT_NE(result.opened, !result.message.empty()) << what;
        (result.opened ? m_opened : m_refused) += 1;
    }

    // Puts `patch` over the bytes at every place in turn.
    void tryPatch(const Bytes& patch) {
        const Victim& victim = GetParam();
        for (std::size_t place = 0; place + patch.size() <= victim.bytes.size(); place += victim.stride()) {
            Bytes bytes = victim.bytes;
            std::copy(patch.begin(), patch.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
            if (bytes != victim.bytes)
                tryIt(bytes, "byte " + std::to_string(place) + " set to " + testing::PrintToString(patch));
        }
    }

    int m_opened = 0;
    int m_refused = 0;
};

TEST_P(Damage, opensTheWholeFile) {
    tryIt(GetParam().bytes, "undamaged");
    EXPECT_EQ(m_opened, 1);
}

TEST_P(Damage, opensOrRefusesEveryPrefix) {
    const Victim& victim = GetParam();
    for (std::size_t length = 0; length < victim.bytes.size(); length += victim.stride())
        tryIt({victim.bytes.begin(), victim.bytes.begin() + static_cast<std::ptrdiff_t>(length)},
              "first " + std::to_string(length) + " bytes");
    EXPECT_GT(m_refused, 0);
}

TEST_P(Damage, opensOrRefusesEveryByteChanged) {
    for (const std::uint8_t value : {0x00, 0x7F, 0x80, 0xFF})
        tryPatch({value});
    EXPECT_GT(m_opened, 0);
    EXPECT_GT(m_refused, 0);
}

TEST_P(Damage, opensOrRefusesEveryWordChanged) {
    tryPatch({0x00, 0x00});
    tryPatch({0x00, 0x01});
    tryPatch({0xFF, 0xFF});
    EXPECT_GT(m_opened, 0);
    EXPECT_GT(m_refused, 0);
}

INSTANTIATE_TEST_SUITE_P(Files, Damage, testing::ValuesIn(victims()), nameOf);

TEST(DamagedFiles, areTheSamplesAndSmallDatabasesOfBothFormats) {
    const auto all = victims();
    EXPECT_GE(all.size(), 8U); // five samples beside the small ones
    EXPECT_LE(all.front().bytes.size(), kEveryPlaceUpTo);
}

} // namespace
} // namespace tallybook::test
