#include "tools/ptxconvert/ReaderModules.h"

#include <gmock/gmock.h>

using namespace ptxconvert;
using ptx::readers::Module;
using testing::HasSubstr;

namespace
{

Module fitting()
{
    return ptx::readers::moduleOf("7", nullptr);
}

} // namespace

TEST(ReaderModules, AReaderOfThisBuildFits)
{
    EXPECT_FALSE(checkBuild(fitting()));
}

TEST(ReaderModules, AReaderOfAnotherVersionDoesNot)
{
    Module module = fitting();
    module.version = "0.0.9";
    const ptx::core::Trouble trouble = checkBuild(module);
    ASSERT_TRUE(trouble);
    EXPECT_THAT(trouble->message, HasSubstr("version 0.0.9"));
}

TEST(ReaderModules, AReaderThatSeesTheSharedTypesOtherwiseDoesNot)
{
    Module module = fitting();
    ++module.bytesOfJob;
    EXPECT_TRUE(checkBuild(module));
    module = fitting();
    --module.bytesOfModel;
    EXPECT_TRUE(checkBuild(module));
}

TEST(ReaderModules, TheSameHoldsForTheReadersForHosts)
{
    MeshModule meshes = meshModuleOf(nullptr);
    EXPECT_FALSE(checkBuild(meshes));
    ++meshes.bytesOfOptions;
    EXPECT_TRUE(checkBuild(meshes));
    meshes = meshModuleOf(nullptr);
    ++meshes.bytesOfResult;
    EXPECT_TRUE(checkBuild(meshes));
    meshes = meshModuleOf(nullptr);
    meshes.version = "0.0.9";
    EXPECT_TRUE(checkBuild(meshes));

    DocumentModule documents{ZN_VERSION, sizeof(ptx::conversion::ReadDocument), nullptr};
    EXPECT_FALSE(checkBuild(documents));
    ++documents.bytesOfResult;
    EXPECT_TRUE(checkBuild(documents));
    documents = {"0.0.9", sizeof(ptx::conversion::ReadDocument), nullptr};
    EXPECT_TRUE(checkBuild(documents));
}

TEST(ReaderModules, AMissingReaderIsNamed)
{
    const auto reader = loadReader("ptxnone");
    ASSERT_FALSE(reader);
    EXPECT_EQ(reader.failure().code, ptx::core::ExitCode::Unsupported);
    EXPECT_THAT(reader.failure().message, HasSubstr("/znCADImport/ptxnone.so cannot be used: "));
}
