// Makes the databases of this folder, or a large one for measuring.
#include "Samples.h"
#include "adapters/PosixFiles.h"
#include "core/model/Limits.h"
#include "core/platform/WholeFile.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace tallybook;

bool write(const std::filesystem::path& path, const platform::Bytes& bytes) {
    adapters::PosixFiles files;
    const platform::Status written = platform::writeWholeFile(files, path, bytes);
    if (written)
        std::cout << path.string() << ' ' << bytes.size() << '\n';
    else
        std::cerr << written.error().description() << '\n';
    return written.ok();
}

bool writeSamples(const std::filesystem::path& folder) {
    bool good = true;
    for (const samples::Sample& sample : samples::samples())
        good = write(folder / sample.fileName, sample.make()) && good;
    return good;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Makes the sample databases.", "make_samples");
    std::filesystem::path folder = ".";
    std::filesystem::path largeFile;
    samples::LargeTable table;
    app.add_option("FOLDER", folder, "Where the samples go")->check(CLI::ExistingDirectory);
    auto* large = app.add_option("--large", largeFile, "Make one large database instead");
    app.add_option("--records", table.records, "Its records")
        ->needs(large)
        ->check(CLI::Range(0, model::kMaxDataRecords));
    app.add_option("--fields", table.fields, "Its fields")->needs(large)->check(CLI::Range(1, model::MaxUserFields));
    app.add_option("--filled", table.filled, "Cells of a hundred that are filled")
        ->needs(large)
        ->check(CLI::Range(0, 100));
    const std::map<std::string, samples::LargeKind> kinds = {{"mixed", samples::LargeKind::Mixed},
                                                             {"numbers", samples::LargeKind::Numbers},
                                                             {"texts", samples::LargeKind::Texts}};
    app.add_option("--kind", table.kind, "What they are filled with")
        ->needs(large)
        ->transform(CLI::CheckedTransformer(kinds));
    std::vector<std::string> wordFiles;
    app.add_option("--words", wordFiles, "Files with a word a line, for texts")->needs(large);
    try {
        app.parse(argc, argv);
        const std::vector<std::string> words = samples::readWords(wordFiles);
        table.words = words;
        const bool good = largeFile.empty() ? writeSamples(std::filesystem::absolute(folder))
                                            : write(std::filesystem::absolute(largeFile), samples::large(table));
        return good ? 0 : 1;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
