// An expression of numbers alone, computed for many records at once.
#pragma once

#include "core/calc/cells/CellReader.h"
#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/ExpressionTree.h"
#include "core/model/WordColumn.h"

#include <array>
#include <cstdint>
#include <span>

namespace tallybook::calc {

// Walks the tree once for the 256 rows of a block and does each operation for all of them, so that the walk costs
// next to nothing. It gives what ExpressionEvaluator gives, and leaves the records that meet a fault to it: a fault's
// reason is not remembered here.
class ExpressionLanes {
public:
    // True when every part of the expression is a number whatever the record holds, and can be computed here.
    static bool fits(const ExpressionTree& tree);

    // The numbers of the fields' cells by slot, for those that the expression names. Both must outlive it.
    using Cells = std::array<const NumberLanes*, kFieldEntries>;
    ExpressionLanes(const ExpressionTree& tree, const Cells& cells) : m_tree(tree), m_cells(cells) {}

    void compute(NumberLanes& results, model::RowBits& faults) const;

private:
    using Node = ExpressionNode;
    using Marks = std::array<std::uint8_t, model::kBlockRows>; // 1 for a row with a fault
    struct Lanes {
        NumberLanes numbers;
        Marks faults;
        bool anyFault = false; // otherwise `faults` is not filled
    };

    void evaluate(int place, Lanes& lanes) const;
    void field(const Node& node, Lanes& lanes) const;
    void operation(const Node& node, Lanes& lanes) const;
    void binary(const Node& node, const Lanes& right, Lanes& lanes) const;
    void divide(const Lanes& right, Lanes& lanes) const;
    void function(const Node& node, Lanes& lanes) const;
    void choose(const Node& node, Lanes& lanes) const;
    void round(const Node& node, Lanes& lanes) const;
    static void addFaults(const Marks& faults, Lanes& lanes);
    static void wantFinite(Lanes& lanes);
    const Node& at(int place) const { return m_tree.node(place); }

    const ExpressionTree& m_tree;
    const Cells& m_cells;
};

} // namespace tallybook::calc
