// A change of one column's type, as Field Properties makes it.
#pragma once

#include "Workbench.h"
#include "core/model/Document.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::bench {

enum class Retyping : std::uint8_t {
    TextToLong, // texts of whole numbers
    TextToList, // texts of which 59 differ
    LongToKey,  // the numbers become the records' keys
};

// Answers every question with Yes; a message or an error throws.
class AgreeingUser : public platform::QuietUser {
public:
    AgreeingUser() : QuietUser(Said::Thrown) {}
    platform::Answer message(const platform::Message& message) override;
};

// A column of its own in the table, which takes its old type again ahead of every change.
class TypeChange {
public:
    // Takes the first free slot, or the last Text field where there is none. The document must outlive this.
    TypeChange(Workbench& bench, model::Document& doc, Retyping kind);

    Nanoseconds run();

    int slot() const { return m_slot; }

    // The column's texts ahead of the change, by record.
    const std::vector<std::string>& texts() const { return m_texts; }

private:
    void restore();

    model::Document& m_doc;
    AgreeingUser m_user;
    platform::Services m_services;
    Retyping m_kind;
    int m_slot;
    std::vector<std::string> m_texts;
};

} // namespace tallybook::bench
