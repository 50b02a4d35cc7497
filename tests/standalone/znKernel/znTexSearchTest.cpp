#include "host/znKernel/znTexSearch.h"

#include "standalone/znKernel/UserInterfaceState.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class TexSearchTest : public SessionTest
{
protected:
    const zn::kernel::UserInterfaceState& shown() { return m_session.state<zn::kernel::UserInterfaceState>(); }
};

TEST_F(TexSearchTest, SearchesForPicturesBeginAtTheFileUntilItIsCleared)
{
    znTexSearch::setCurrentFile("/cad/ä.osb");
    EXPECT_EQ(shown().textureBase, "/cad/ä.osb");
    znTexSearch::clearCurrentFile();
    EXPECT_EQ(shown().textureBase, "");
    znTexSearch::setCurrentFile("/cad/b.osb");
    znTexSearch::setCurrentFile(nullptr);
    EXPECT_EQ(shown().textureBase, "");
}

} // namespace
