// Fields as people name them.
#pragma once

#include "core/model/Document.h"

#include <string>
#include <variant>

namespace tallybook::cli {

// The grid column of a used field: its name as the grid shows it, in letters of either case when no name is the very
// text; or a sentence that says why there is none. UTF-8.
std::variant<int, std::string> columnNamed(const model::Document& doc, const std::string& name);

// The same, or "@" and a slot from 0, used or not.
std::variant<int, std::string> columnNamedOrNumbered(const model::Document& doc, const std::string& name);

} // namespace tallybook::cli
