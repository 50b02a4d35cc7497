#include "tests/house/Layers.h"

#include "tests/house/MadeTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using house::Finding;
using house::MadeTree;
using testing::ElementsAre;

namespace
{

// What is broken in a tree in which `file` includes nothing but `included`, on its third line.
std::vector<Finding> brokenBy(const std::string& file, const std::string& included)
{
    const MadeTree tree;
    tree.write(file, "#pragma once\n\n#include " + included + "\n");
    return house::brokenLayers(tree.read());
}

bool mayInclude(const std::string& file, const std::string& included)
{
    return brokenBy(file, '"' + included + '"').empty();
}

} // namespace

TEST(Layers, NameFileLineAndIncludeOfWhatIsBroken)
{
    EXPECT_THAT(brokenBy("host/znUtils/znFile.h", "\"standalone/znUtils/Files.h\""),
                ElementsAre(Finding{"host/znUtils/znFile.h", 3, "standalone/znUtils/Files.h"}));
}

TEST(Layers, AFolderWhoseNameOnlyBeginsLikeALayerIsAnotherFolder)
{
    EXPECT_TRUE(mayInclude("scene/a.h", "importers/a.h"));
    EXPECT_FALSE(mayInclude("import/a.h", "importer/a.h"));
}

TEST(Layers, LeavesIncludeNothingOfOursButTheVocabulary)
{
    EXPECT_TRUE(mayInclude("import/filetypes/a.cpp", "import/filetypes/a.h"));
    EXPECT_FALSE(mayInclude("import/filetypes/a.cpp", "host/HostExport.h"));
    EXPECT_FALSE(mayInclude("import/filetypes/a.cpp", "import/a.h"));
    EXPECT_FALSE(mayInclude("import/filetypes/a.cpp", "protocol/a.h"));
    EXPECT_TRUE(mayInclude("protocol/a.cpp", "import/filetypes/a.h"));
    EXPECT_FALSE(mayInclude("protocol/a.cpp", "host/HostExport.h"));
}

TEST(Layers, EveryoneMayUseTheLeaves)
{
    for (const char* file : {"import/a.cpp", "converter/a.cpp", "scene/a.cpp", "files/a.cpp", "files/glb/a.cpp",
                             "geometry/a.cpp", "render/a.cpp", "standalone/znKernel/a.cpp", "ptx/core/a.cpp",
                             "ptx/readers/a.cpp", "importer/a.cpp", "tools/znimport/a.cpp"}) {
        EXPECT_TRUE(mayInclude(file, "protocol/ExitCode.h")) << file;
        EXPECT_TRUE(mayInclude(file, "import/filetypes/a.h")) << file;
    }
}

TEST(Layers, ContractIncludesItselfAndTheVocabularyOnly)
{
    EXPECT_TRUE(mayInclude("host/a.h", "host/znUtils/znFile.h"));
    EXPECT_TRUE(mayInclude("host/a.h", "import/filetypes/znCADFileTypes.h"));
    EXPECT_TRUE(brokenBy("host/a.h", "<QString>").empty());
    EXPECT_FALSE(mayInclude("host/a.h", "import/znFileLoaderJob.h"));
    EXPECT_FALSE(mayInclude("host/a.h", "protocol/ExitCode.h"));
    EXPECT_EQ(brokenBy("host/a.h", "<importer/Importer.h>").size(), 1U);
    EXPECT_FALSE(mayInclude("host/a.h", "tests/support/Builder.h"));
}

TEST(Layers, LibraryIncludesTheContractAndItselfOnly)
{
    for (const char* folder : {"import", "converter", "loader", "optimization", "cad/visualization", "plmxml"}) {
        const std::string file = std::string(folder) + "/x.cpp";
        EXPECT_TRUE(mayInclude(file, "host/znUtils/znFile.h")) << folder;
        EXPECT_TRUE(mayInclude(file, "cad/xml/CADDocument.h")) << folder;
        for (const char* other : {"scene/a.h", "files/a.h", "standalone/session/a.h", "importer/a.h", "ptx/core/a.h"})
            EXPECT_FALSE(mayInclude(file, other)) << folder << other;
    }
}

TEST(Layers, CadXmlKnowsTinyXmlTheStandardLibraryAndItselfOnly)
{
    EXPECT_TRUE(mayInclude("cad/xml/a.cpp", "cad/xml/CADDocument.h"));
    EXPECT_TRUE(brokenBy("cad/xml/a.cpp", "<tinyxml.h>").empty());
    EXPECT_TRUE(brokenBy("cad/xml/a.cpp", "<string_view>").empty());
    for (const char* included : {"<QString>", "<qglobal.h>", "<QtCore/QString>", "<boost/any.hpp>",
                                 "\"host/HostExport.h\"", "\"cad/visualization/a.h\"", "\"import/filetypes/a.h\""})
        EXPECT_EQ(brokenBy("cad/xml/a.cpp", included).size(), 1U) << included;
}

TEST(Layers, LibraryAndContractIncludeHeadersOfOneSystemNowhereButInThePlatformHeader)
{
    EXPECT_TRUE(brokenBy("import/Platform.h", "<windows.h>").empty());
    for (const char* file : {"host/znUtils/a.h", "import/a.cpp", "converter/a.cpp", "cad/visualization/a.cpp"}) {
        for (const char* included : {"<QString>", "<boost/any.hpp>", "<tinyxml.h>", "<filesystem>"})
            EXPECT_TRUE(brokenBy(file, included).empty()) << file << included;
        for (const char* included : {"<unistd.h>", "<windows.h>", "<sys/stat.h>", "<X11/Xlib.h>", "<Windows.h>"})
            EXPECT_EQ(brokenBy(file, included).size(), 1U) << file << included;
    }
}

TEST(Layers, SceneStandsOnTheContractAlone)
{
    EXPECT_TRUE(mayInclude("scene/a.cpp", "host/OSGSystem/Node.h"));
    for (const char* other : {"files/a.h", "geometry/a.h", "render/a.h", "standalone/session/a.h", "import/a.h"})
        EXPECT_FALSE(mayInclude("scene/a.cpp", other)) << other;
}

TEST(Layers, AFileFormatKnowsTheSceneAndWhatAllFormatsShare)
{
    EXPECT_TRUE(mayInclude("files/gltf/a.cpp", "files/Error.h"));
    EXPECT_TRUE(mayInclude("files/gltf/a.cpp", "scene/Mesh.h"));
    EXPECT_FALSE(mayInclude("files/gltf/a.cpp", "files/obj/ObjReader.h"));
    EXPECT_FALSE(mayInclude("files/glb/a.cpp", "files/gltf/GltfReader.h"));
    EXPECT_FALSE(mayInclude("files/SceneReaders.cpp", "files/gltf/GltfReader.h"));
    EXPECT_FALSE(mayInclude("files/gltf/a.cpp", "geometry/a.h"));
}

TEST(Layers, GeometryAndPicturesShareRaysOnly)
{
    EXPECT_TRUE(mayInclude("render/a.cpp", "geometry/rays/RayScene.h"));
    EXPECT_FALSE(mayInclude("render/a.cpp", "geometry/Remeshing.h"));
    EXPECT_TRUE(mayInclude("render/a.cpp", "files/OutputFile.h"));
    EXPECT_FALSE(mayInclude("render/a.cpp", "files/glb/GlbWriter.h"));
    EXPECT_FALSE(mayInclude("geometry/a.cpp", "render/Snapshot.h"));
    EXPECT_FALSE(mayInclude("geometry/a.cpp", "files/scenefile/SceneFile.h"));
}

TEST(Layers, OpenHostNeverIncludesTheLibrary)
{
    for (const char* other : {"standalone/session/Session.h", "host/znUtils/znFile.h", "files/gltf/a.h", "scene/a.h"})
        EXPECT_TRUE(mayInclude("standalone/a/b.cpp", other)) << other;
    for (const char* folder : {"import", "converter", "loader", "optimization", "cad/xml", "cad/visualization",
                               "plmxml", "importer", "ptx/core", "tools/znimport", "tests/support", "bench/scenegraph"})
        EXPECT_FALSE(mayInclude("standalone/a/b.cpp", std::string(folder) + "/x.h")) << folder;
}

TEST(Layers, OnlyTheStartOfTheOpenHostKnowsAllModules)
{
    EXPECT_TRUE(mayInclude("standalone/startup/a.cpp", "standalone/znKernel/a.h"));
    EXPECT_FALSE(mayInclude("standalone/znKernel/a.cpp", "standalone/startup/a.h"));
    EXPECT_TRUE(mayInclude("standalone/session/a.cpp", "standalone/znUtils/a.h"));
    EXPECT_FALSE(mayInclude("standalone/session/a.cpp", "standalone/znKernel/a.h"));
}

TEST(Layers, ConverterSeesSceneAndFilesAndNoHost)
{
    EXPECT_TRUE(mayInclude("ptx/occt/a.cpp", "ptx/core/a.h"));
    EXPECT_TRUE(mayInclude("ptx/scene/a.cpp", "files/scenefile/Writer.h"));
    for (const char* other : {"standalone/session/a.h", "converter/znPtxConverterJob.h", "importer/a.h", "tools/a.h"})
        EXPECT_FALSE(mayInclude("ptx/scene/a.cpp", other)) << other;
}

TEST(Layers, WhatAllReadersOfTheConverterShareKnowsNoReader)
{
    EXPECT_TRUE(mayInclude("ptx/readers/step/a.cpp", "ptx/readers/Reader.h"));
    EXPECT_FALSE(mayInclude("ptx/readers/Reader.cpp", "ptx/readers/step/StepReader.h"));
    EXPECT_TRUE(mayInclude("ptx/readers/step/a.cpp", "ptx/occt/a.h"));
    EXPECT_FALSE(mayInclude("ptx/readers/jt/graph/a.cpp", "ptx/occt/a.h"));
    EXPECT_FALSE(mayInclude("ptx/readers/stl/a.cpp", "ptx/occt/a.h"));
    EXPECT_FALSE(mayInclude("ptx/readers/step/a.cpp", "ptx/conversion/a.h"));
}

TEST(Layers, ImporterAndToolsSeeNoTestsAndTheConvertersInsidesWhereTheyMust)
{
    EXPECT_TRUE(mayInclude("importer/a.cpp", "standalone/startup/a.h"));
    EXPECT_TRUE(mayInclude("importer/a.cpp", "loader/znPtxLoaderJob.h"));
    EXPECT_FALSE(mayInclude("importer/a.cpp", "tests/support/Builder.h"));
    EXPECT_FALSE(mayInclude("importer/a.cpp", "ptx/core/a.h"));
    EXPECT_FALSE(mayInclude("importer/a.cpp", "tools/znimport/a.h"));
    EXPECT_TRUE(mayInclude("tools/znimport/a.cpp", "importer/Importer.h"));
    EXPECT_FALSE(mayInclude("tools/znimport/a.cpp", "ptx/core/a.h"));
    EXPECT_FALSE(mayInclude("tools/znimport/a.cpp", "bench/scenegraph/Tree.h"));
    EXPECT_TRUE(mayInclude("tools/ptxconvert/main.cpp", "ptx/conversion/Conversion.h"));
    EXPECT_FALSE(mayInclude("tools/ptxconvert/main.cpp", "importer/Importer.h"));
    EXPECT_FALSE(mayInclude("tools/ptxconvert/main.cpp", "importer/plmxml/Normaliser.h"));
    EXPECT_TRUE(mayInclude("tools/ptxconvert/documents/a.cpp", "importer/plmxml/Normaliser.h"));
    EXPECT_FALSE(mayInclude("tools/ptxconvert/documents/a.cpp", "importer/Importer.h"));
    EXPECT_FALSE(mayInclude("importer/plmxml/a.cpp", "importer/Importer.h"));
    EXPECT_FALSE(mayInclude("importer/plmxml/a.cpp", "standalone/session/Session.h"));
    EXPECT_TRUE(mayInclude("tools/manual/a.cpp", "ptx/core/CommandLine.h"));
}
