#include "core/pdb/CellForms.h"

#include <iterator>

namespace tallybook::pdb {

ResultKind resultKind(std::uint8_t ResultType) {
    static constexpr ResultKind kKinds[] = {
        ResultKind::Number, ResultKind::Date,    ResultKind::Date,    ResultKind::Date,  ResultKind::Whole,
        ResultKind::Whole,  ResultKind::Whole,   ResultKind::Time,    ResultKind::Whole, ResultKind::Whole,
        ResultKind::Whole,  ResultKind::Seconds, ResultKind::Minutes, ResultKind::Text,
    };
    return ResultType < std::size(kKinds) ? kKinds[ResultType] : ResultKind::Unknown;
}

} // namespace tallybook::pdb
