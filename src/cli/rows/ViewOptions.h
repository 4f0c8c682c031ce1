// Views and filters chosen by their names.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <optional>
#include <string>
#include <vector>

namespace tallybook::cli {

// Chooses a view by the name that it has among the choices of the window, "Show All Fields" included. Names
// and reasons are UTF-8. The reason when there is no such view.
std::optional<std::string> applyViewNamed(model::Document& doc, platform::Services& services,
                                          const std::string& name);

// Chooses a filter, or "No Filter", or several filters together.
std::optional<std::string> applyFiltersNamed(model::Document& doc, platform::Services& services,
                                             const std::vector<std::string>& names);

// The view when it has a name, then the filters when there are any.
std::optional<std::string> applyView(model::Document& doc, platform::Services& services, const std::string& view,
                                     const std::vector<std::string>& filters);

} // namespace tallybook::cli
