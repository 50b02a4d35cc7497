#include "host/znKernel/znModuleBase.h"

#include "standalone/znKernel/MessageModules.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

using testing::ElementsAre;

class ModuleBaseTest : public SessionTest
{
protected:
    /// Registers a module that notes its call, and answers if it is to.
    void addModule(const char* name, bool answers)
    {
        m_session.state<zn::kernel::MessageModules>().modules.emplace_back([this, name, answers](znMessage& message) {
            m_calls.push_back(name + std::to_string(message.getCode()));
            if (answers)
                message.set("answer", std::string(name), true);
            return answers;
        });
    }

    std::vector<std::string> m_calls;
    znMessage m_message{7, "question", 1};
};

TEST_F(ModuleBaseTest, WithoutModulesAMessageComesBackAsItWent)
{
    znModuleBase::sendMessage(m_message, false);
    EXPECT_TRUE(m_message.get("answer").empty());
    EXPECT_EQ(boost::any_cast<int>(m_message.get("question")), 1);
}

TEST_F(ModuleBaseTest, TheFirstAnswerEndsTheRound)
{
    addModule("a", false);
    addModule("b", true);
    addModule("c", true);
    znModuleBase::sendMessage(m_message, false);
    EXPECT_THAT(m_calls, ElementsAre("a7", "b7"));
    EXPECT_EQ(boost::any_cast<std::string>(m_message.get("answer")), "b");
}

TEST_F(ModuleBaseTest, AMessageToAllReachesEveryModule)
{
    addModule("a", true);
    addModule("b", true);
    znModuleBase::sendMessage(m_message, true);
    EXPECT_THAT(m_calls, ElementsAre("a7", "b7"));
    EXPECT_EQ(boost::any_cast<std::string>(m_message.get("answer")), "b");
}

} // namespace
