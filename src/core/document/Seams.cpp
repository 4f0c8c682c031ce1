#include "core/document/Seams.h"

namespace tallybook::document {

void loadExternalData(model::Document&, platform::Services&) {}

} // namespace tallybook::document
