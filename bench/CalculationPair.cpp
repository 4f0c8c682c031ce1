#include "CalculationPair.h"

#include "core/document/grid/Recalculate.h"

#include <cmath>
#include <stdexcept>
#include <vector>

namespace tallybook::bench {

CalculationPair::CalculationPair(Workbench& bench, const std::filesystem::path& file, CalculationForm form)
    : m_services(bench.services()), m_doc(bench.open(file)), m_sqlite(":memory:") {
    m_sqlite.createAndInsert(SqliteValues(*m_doc));
    m_sqlite.run("ALTER TABLE t ADD COLUMN result REAL");
    m_calculation = addCalculation(*m_doc, m_services, form);
    m_update = "UPDATE t SET result=" + sqlOf(m_calculation, form);
    sqlite();
    ours();
    compare();
}

Nanoseconds CalculationPair::ours() {
    clearResults(*m_doc, m_calculation);
    return timed([&] { document::recalcExpressions(*m_doc, m_services); });
}

Nanoseconds CalculationPair::sqlite() {
    m_sqlite.run("UPDATE t SET result=0.5"); // as wide as the results
    return timed([&] { m_sqlite.run(m_update); });
}

// Ours are rounded to two digits.
void CalculationPair::compare() {
    const std::vector<double> results = m_sqlite.numbers("SELECT result FROM t ORDER BY id");
    if (results.size() != static_cast<std::size_t>(m_doc->NumDataRecs))
        throw std::runtime_error("the tables differ in their records");
    for (std::size_t record = 0; record < results.size(); ++record) {
        const std::string text = m_doc->grd.text(static_cast<int>(record) + model::kFirstDataRow,
                                                 model::columnOfSlot(m_calculation.field));
        if (std::fabs(std::stod(text) - results[record]) > 0.0051)
            throw std::runtime_error("record " + std::to_string(record + 1) + ": " + text + " is not " +
                                     std::to_string(results[record]));
    }
}

} // namespace tallybook::bench
