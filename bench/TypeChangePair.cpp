#include "TypeChangePair.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace tallybook::bench {

TypeChangePair::TypeChangePair(Workbench& bench, const std::filesystem::path& file, Retyping kind)
    : m_doc(bench.open(file)), m_change(bench, *m_doc, kind), m_sqlite(":memory:"), m_kind(kind) {
    m_sqlite.createAndInsert(SqliteValues(*m_doc));
    m_sqlite.addColumns("changed", "kept", m_change.texts());
    if (kind == Retyping::LongToKey)
        m_sqlite.run("UPDATE t SET kept=CAST(kept AS INTEGER)");
    ours();
    sqlite();
    compare();
}

// A list shows the texts that it was made of.
void TypeChangePair::compare() {
    const std::vector<double> numbers = m_sqlite.numbers("SELECT changed FROM t ORDER BY id");
    for (std::size_t record = 0; record < m_change.texts().size(); ++record) {
        const std::string text =
            m_doc->grd.text(static_cast<int>(record) + model::kFirstDataRow, model::columnOfSlot(m_change.slot()));
        const bool same =
            m_kind == Retyping::TextToList ? text == m_change.texts()[record] : std::stod(text) == numbers.at(record);
        if (!same)
            throw std::runtime_error("record " + std::to_string(record + 1) + " shows " + text);
    }
}

// SQLite has no lists: its plainest update of the column serves for them too.
Nanoseconds TypeChangePair::sqlite() {
    m_sqlite.run(m_kind == Retyping::LongToKey ? "UPDATE t SET changed=0" : "UPDATE t SET changed=kept");
    return timed([&] {
        m_sqlite.run(m_kind == Retyping::LongToKey ? "UPDATE t SET changed=kept"
                                                   : "UPDATE t SET changed=CAST(changed AS INTEGER)");
    });
}

} // namespace tallybook::bench
