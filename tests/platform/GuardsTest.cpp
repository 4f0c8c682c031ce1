#include "core/platform/Guards.h"

#include "support/ScriptedUser.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace tallybook::platform {
namespace {

using Pointer = Screen::Pointer;

struct Guards : testing::Test {
    test::ScriptedUser user;
    model::Document doc;
};

TEST_F(Guards, hourGlassShowsTheWaitPointerWhileItLives) {
    {
        const HourGlass wait(user);
        EXPECT_EQ(user.pointer(), Pointer::Wait);
    }
    EXPECT_EQ(user.pointer(), Pointer::Default);
}

TEST_F(Guards, defaultCursorPutsBackWhatWasThere) {
    for (const Pointer before : {Pointer::Wait, Pointer::Default}) {
        user.setPointer(before);
        {
            const DefaultCursor pointer(user);
            EXPECT_EQ(user.pointer(), Pointer::Default);
        }
        EXPECT_EQ(user.pointer(), before);
    }
}

TEST_F(Guards, freezeStopsRepaintingAndKeepsEventsOut) {
    doc.GridReady = true;
    {
        const Freeze freeze(user, doc);
        EXPECT_FALSE(user.gridRepaints);
        EXPECT_FALSE(doc.GridReady);
    }
    EXPECT_TRUE(user.gridRepaints);
    EXPECT_TRUE(doc.GridReady);
}

TEST_F(Guards, everyWayOutOfAnOperationRestoresTheState) {
    const auto operation = [this](bool fails) {
        const HourGlass wait(user);
        const Freeze freeze(user, doc);
        if (fails)
            throw std::runtime_error("nobody expected this");
    };
    operation(false);
    EXPECT_TRUE(user.atRest());
    EXPECT_THROW(operation(true), std::runtime_error);
    EXPECT_TRUE(user.atRest());
    EXPECT_TRUE(doc.GridReady);
}

} // namespace
} // namespace tallybook::platform
