// Three conditions with their name, as filters and conditional expressions hold them up to their links.
#pragma once

#include "core/pdb/ByteReader.h"
#include "core/pdb/ByteWriter.h"
#include "core/pdb/Layout.h"

namespace tallybook::pdb {

// | 21 | name | 6 | operand slots | 60 | three values of width 20 | 3 | operators |
template <class Conditions> void readConditions(ByteReader& in, Conditions& conditions) {
    conditions.Name = in.getPaddedText(layout::kConditionNameWidth);
    in.getBytes(conditions.CondFields);
    in.getBytes(conditions.CondFields2);
    for (std::string& value : conditions.CondValues)
        value = in.getPaddedText(layout::kConditionValueWidth);
    in.getBytes(conditions.CondOps);
}

template <class Conditions> void buildConditions(const Conditions& conditions, ByteWriter& out) {
    out.outArea(conditions.Name, layout::kConditionNameWidth);
    out.outBytes(conditions.CondFields);
    out.outBytes(conditions.CondFields2);
    for (const std::string& value : conditions.CondValues)
        out.outArea(value, layout::kConditionValueWidth);
    out.outBytes(conditions.CondOps);
}

} // namespace tallybook::pdb
