// show_records DELIMITER FILE: the records of a delimited text, each item as hex behind a blank, a record on a line.

#include "adapters/PosixFiles.h"
#include "core/convert/DelimitedText.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    tallybook::adapters::PosixFiles files;
    tallybook::convert::FileSource source(files, argv[2]);
    tallybook::convert::DelimitedReader reader(source, argv[1][0]);
    std::string scratch;
    while (reader.next()) {
        for (std::size_t item = 0; item < reader.items(); ++item) {
            std::putchar(' ');
            for (const char c : reader.item(item, scratch))
                std::printf("%02x", static_cast<unsigned char>(c));
        }
        std::putchar('\n');
    }
    return reader.status().ok() ? 0 : 1;
}
