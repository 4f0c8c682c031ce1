#include "core/design/ConditionText.h"

#include <gtest/gtest.h>

namespace tallybook::design {
namespace {

using model::FieldType;

class ConditionText : public testing::Test {
protected:
    ConditionText() {
        db.Fields[1] = {.Type = FieldType::Text, .Name = "Title", .Default = {}};
        db.Fields[3] = {.Type = FieldType::Integer, .Name = "Pages", .Default = {}};
        db.Fields[4] = {.Type = FieldType::Date, .Name = "Bought", .Default = {}};
    }
    model::DatabaseModel db;
    model::CondExprDef condition;
};

TEST_F(ConditionText, isEmptyWithoutACondition) {
    EXPECT_EQ(conditionText(db, condition), "");
}

TEST_F(ConditionText, tellsEachConditionAndItsLink) {
    condition.CondFields = {3, 0, 4}; // left 1, right 1, left 2
    condition.CondFields2 = {0, 1, 3};
    condition.CondOps = {'>', 'J', '='};
    condition.CondValues = {"100", "T", ""};
    condition.CondLinks = {'A', 0, 0};
    EXPECT_EQ(conditionText(db, condition), "Pages > \"100\" AND Bought >= Today");
    condition.CondLinks = {'A', 'O', 0};
    EXPECT_EQ(conditionText(db, condition), "Pages > \"100\" AND Bought >= Today OR Title = Pages");
}

TEST_F(ConditionText, showsAnOperatorThatIsNotKnownAsAQuestionMark) {
    condition.CondFields = {1, 0, 0};
    condition.CondOps = {'x', 0, 0};
    condition.CondValues = {"Sea", "", ""};
    EXPECT_EQ(conditionText(db, condition), "Title ? \"Sea\"");
}

} // namespace
} // namespace tallybook::design
