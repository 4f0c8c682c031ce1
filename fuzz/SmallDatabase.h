// The smallest database that has one of everything: the start of fuzzing and the victim of systematic damage.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Files.h"

namespace tallybook::fuzz {

// A field of every type, an auto-writer, two views, two filters and the spare ones, two forms, a password and three
// records, the first with every cell filled.
void fillSmallDatabase(model::Document& doc);

// The same as a file of at most 6 KB.
platform::Bytes smallDatabase();

} // namespace tallybook::fuzz
