// Databases made from a number, open, for trying what a designer does to one whose design it was not.
#pragma once

#include "core/model/Document.h"
#include "support/TestServices.h"

#include <cstdint>
#include <string>

namespace tallybook::test {

// Opens the generated database of a seed, as another program may have written it.
void openAny(model::Document& doc, TestServices& t, std::uint32_t seed);

// The same with names and attributes that the dialogs accept, and yet nothing that a dialog could make anew from what
// it shows: two fields of one name, fields that are named like constants, names with line ends and with no-break
// spaces, codes and bytes that no list has.
void openDesigned(model::Document& doc, TestServices& t, std::uint32_t seed);

// Everything that a document holds of its records, as text.
std::string recordsOf(const model::Document& doc);

} // namespace tallybook::test
