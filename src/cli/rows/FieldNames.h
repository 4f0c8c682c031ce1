// Fields, views, filters and items as people name them.
#pragma once

#include "core/model/Document.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tallybook::cli {

// The grid column of a used field: its name as the grid shows it, in letters of either case when no name is the very
// text; or a sentence that says why there is none. UTF-8.
std::variant<int, std::string> columnNamed(const model::Document& doc, const std::string& name);

// The place of a UTF-8 name among names in Windows-1252: the very one, else the only one that differs in the case of
// its letters alone. Nothing with a sentence in `why` that tells what there is; `what` as "view".
std::optional<std::size_t> placeNamed(const std::vector<std::string>& names, const std::string& name,
                                      std::string_view what, std::string& why);

// The same as columnNamed, or "@" and a slot from 0, used or not.
std::variant<int, std::string> columnNamedOrNumbered(const model::Document& doc, const std::string& name);

} // namespace tallybook::cli
