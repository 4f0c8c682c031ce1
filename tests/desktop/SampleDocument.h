// A small database with a field of each type that the windows treat in their own way.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Regional.h"

namespace tallybook::test {

// The field slots of the sample.
enum SampleSlot : int {
    kCategory = 0,
    kTitle = 1,    // Text
    kPages = 2,    // Integer
    kStock = 3,    // Long with increment and decrement buttons
    kPrice = 4,    // Float, 2 decimals
    kShelf = 5,    // List: Upper, Middle, Lower
    kLent = 6,     // Checkbox
    kBought = 7,   // Date
    kAt = 8,       // Time
    kNotes = 9,    // Memo
    kCover = 10,   // Radio Button: Hard, Soft
    kKey = 11,     // Key
    kNumber = 12,  // Auto Incremental
    kValue = 13,   // Expression
    kKind = 14,    // Text with an auto-writer list
    kChanged = 15, // Date, stamped when the record is updated
    kPicture = 16, // Image
    kJoin = 17,    // DB Join with a picker
};

// Fills an empty document: three records, nothing modified.
void makeSample(model::Document& doc, const platform::Regional& regional);

} // namespace tallybook::test
