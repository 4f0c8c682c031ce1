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

// The field slots of the other database, which the sample's join leads to.
enum PublisherSlot : int {
    kHouse = 1,           // Text
    kCity = 2,            // Text
    kPublisherNumber = 3, // Integer: 10, 20, 30
    kAbout = 4,           // Memo
};
inline constexpr int kByCity = 4; // its view: city, house, number, about

inline constexpr int kTown = 18; // a lookup of the city, which follows the join

// Makes the sample's join show the house by the number, with a lookup; the first record refers to the second
// publisher, the others to none.
void joinPublishers(model::Document& sample);

// Fills an empty document with the publishers: three records.
void makePublishers(model::Document& doc, const platform::Regional& regional);

} // namespace tallybook::test
