#include "standalone/session/Session.h"

#include "tests/standalone/session/SessionTest.h"

namespace
{

struct Counter {
    int value = 3;
};

struct OtherCounter {
    int value = 5;
};

std::vector<std::string> ends; // what was destroyed, in order

struct First {
    ~First() { ends.emplace_back("first"); }
};

/// Asks for the first state while it goes.
struct Second {
    First* first = nullptr;
    ~Second()
    {
        EXPECT_EQ(&zn::Session::require().state<First>(), first);
        ends.emplace_back("second");
    }
};

TEST(SessionState, IsMadeWhenItIsFirstAskedForAndStays)
{
    zn::StandaloneSession session;
    EXPECT_EQ(session.state<Counter>().value, 3);
    session.state<Counter>().value = 4;
    EXPECT_EQ(session.state<Counter>().value, 4);
    EXPECT_EQ(session.state<OtherCounter>().value, 5);
}

TEST(SessionState, IsANewOneInTheNextSession)
{
    {
        zn::StandaloneSession session;
        session.state<Counter>().value = 4;
    }
    zn::StandaloneSession session;
    EXPECT_EQ(session.state<Counter>().value, 3);
}

TEST(SessionState, GoesNewestFirstWhileTheSessionStillLives)
{
    ends.clear();
    {
        zn::StandaloneSession session;
        First& first = session.state<First>();
        session.state<Second>().first = &first;
    }
    EXPECT_THAT(ends, testing::ElementsAre("second", "first"));
}

} // namespace
