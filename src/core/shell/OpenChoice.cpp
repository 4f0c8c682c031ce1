#include "core/shell/OpenChoice.h"

#include "core/calc/values/Text.h"
#include "core/pdb/Names.h"

namespace tallybook::shell {

bool isTallybookName(std::string_view fileName) {
    const std::string_view start = fileName.substr(0, pdb::kPrefix2x.size());
    return calc::equalText(start, pdb::kPrefix2x, calc::TextCase::Folded) ||
           calc::equalText(start, pdb::kPrefix1x, calc::TextCase::Folded);
}

} // namespace tallybook::shell
