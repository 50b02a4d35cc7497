#include "tests/house/LayerScanner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;
using house::BrokenLayer;
using house::scanLayers;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

// A small made-up source tree in a folder of its own, gone with the test.
class LayerScanner : public testing::Test
{
protected:
    LayerScanner()
    {
        std::string pattern = (fs::temp_directory_path() / "zn layers \xc3\xa4 XXXXXX").string();
        root = mkdtemp(pattern.data());
    }

    ~LayerScanner() override { fs::remove_all(root); }

    void write(const fs::path& file, const std::string& text) const
    {
        fs::create_directories((root / file).parent_path());
        std::ofstream(root / file) << text;
    }

    // The broken layers of a tree in which `file` includes nothing but `included`, on its third line.
    std::vector<BrokenLayer> brokenBy(const fs::path& file, const std::string& included) const
    {
        write(file, "#pragma once\n\n#include " + included + "\n");
        return scanLayers(root).broken;
    }

    fs::path root;
};

} // namespace

TEST_F(LayerScanner, FindsNothingInAnEmptyTree)
{
    const auto report = scanLayers(root);

    EXPECT_THAT(report.files, IsEmpty());
    EXPECT_THAT(report.broken, IsEmpty());
}

TEST_F(LayerScanner, LooksAtSourcesAndHeadersOfTheLayersOnly)
{
    write("host/znUtils/znFile.h", "");
    write("cad/xml/CADDocument.cpp", "");
    write("loader/README.md", "");
    write("build/release/generated.h", "");

    EXPECT_THAT(scanLayers(root).files, ElementsAre("cad/xml/CADDocument.cpp", "host/znUtils/znFile.h"));
}

TEST_F(LayerScanner, NamesFileLineAndIncludeOfABrokenLayer)
{
    EXPECT_THAT(brokenBy("host/znUtils/znFile.h", "\"standalone/znUtils/Files.h\""),
                ElementsAre(BrokenLayer{"host/znUtils/znFile.h", 3, "standalone/znUtils/Files.h"}));
}

TEST_F(LayerScanner, ContractIncludesItselfAndTheVocabularyOnly)
{
    EXPECT_THAT(brokenBy("host/a.h", "\"host/znUtils/znFile.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("host/a.h", "\"import/filetypes/znCADFileTypes.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("host/a.h", "<QString>"), IsEmpty());
    EXPECT_THAT(brokenBy("host/a.h", "\"import/znFileLoaderJob.h\"").size(), 1U);
    EXPECT_THAT(brokenBy("host/a.h", "<importer/Importer.h>").size(), 1U);
    EXPECT_THAT(brokenBy("host/a.h", "\"tests/support/Builder.h\"").size(), 1U);
}

TEST_F(LayerScanner, OpenHostNeverIncludesTheLibrary)
{
    EXPECT_THAT(brokenBy("standalone/a/b.cpp", "\"standalone/session/Session.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("standalone/a/b.cpp", "\"host/znUtils/znFile.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("standalone/a/b.cpp", "\"import/filetypes/znCADFileTypes.h\""), IsEmpty());
    for (const char* folder : {"import", "converter", "loader", "optimization", "cad/xml", "cad/visualization",
                               "plmxml", "importer", "tools/znimport", "tests/support", "bench/scenegraph"})
        EXPECT_THAT(brokenBy("standalone/a/b.cpp", '"' + std::string(folder) + "/x.h\"").size(), 1U) << folder;
}

TEST_F(LayerScanner, LibraryIncludesTheContractAndItselfOnly)
{
    for (const char* folder : {"import", "converter", "loader", "optimization", "cad/visualization", "plmxml"}) {
        const fs::path file = fs::path(folder) / "x.cpp";
        EXPECT_THAT(brokenBy(file, "\"host/znUtils/znFile.h\""), IsEmpty()) << folder;
        EXPECT_THAT(brokenBy(file, "\"cad/xml/CADDocument.h\""), IsEmpty()) << folder;
        EXPECT_THAT(brokenBy(file, "\"standalone/session/Session.h\"").size(), 1U) << folder;
        EXPECT_THAT(brokenBy(file, "\"importer/Importer.h\"").size(), 1U) << folder;
        fs::remove(root / file);
    }
}

TEST_F(LayerScanner, VocabularyIncludesNothingOfOurs)
{
    EXPECT_THAT(brokenBy("import/filetypes/znCADFileTypes.cpp", "\"import/filetypes/znCADFileTypes.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("import/filetypes/znCADFileTypes.cpp", "\"host/HostExport.h\"").size(), 1U);
    EXPECT_THAT(brokenBy("import/filetypes/znCADFileTypes.cpp", "\"import/znMessages.h\"").size(), 1U);
}

TEST_F(LayerScanner, ProtocolIncludesItselfTheVocabularyAndTheStandardLibraryOnly)
{
    EXPECT_THAT(brokenBy("protocol/a.h", "\"protocol/ExitCode.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("protocol/a.h", "\"import/znCADFileTypes.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("protocol/a.h", "<string_view>"), IsEmpty());
    for (const char* included : {"<QString>", "\"host/HostExport.h\"", "\"import/znFileLoaderJob.h\"",
                                 "\"converter/StageLabels.h\"", "\"tools/ptxconvert/core/Stage.h\""})
        EXPECT_THAT(brokenBy("protocol/a.h", included).size(), 1U) << included;
}

TEST_F(LayerScanner, HostSideAndConverterSideBothIncludeTheProtocol)
{
    for (const char* file : {"converter/a.cpp", "standalone/znKernel/a.cpp", "tools/ptxconvert/a.cpp",
                             "tools/ptxtessellate/a.cpp", "importer/a.cpp"}) {
        EXPECT_THAT(brokenBy(file, "\"protocol/ExitCode.h\""), IsEmpty()) << file;
        fs::remove(root / file);
    }
    EXPECT_THAT(brokenBy("cad/xml/a.cpp", "\"protocol/ExitCode.h\"").size(), 1U);
}

TEST_F(LayerScanner, CadXmlKnowsTinyXmlTheStandardLibraryAndItselfOnly)
{
    EXPECT_THAT(brokenBy("cad/xml/a.cpp", "\"cad/xml/CADDocument.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("cad/xml/a.cpp", "<tinyxml.h>"), IsEmpty());
    EXPECT_THAT(brokenBy("cad/xml/a.cpp", "<string_view>"), IsEmpty());
    for (const char* included :
         {"<QString>", "<qglobal.h>", "<QtCore/QString>", "<boost/any.hpp>", "\"host/HostExport.h\"",
          "\"cad/visualization/a.h\"", "\"import/filetypes/znCADFileTypes.h\""})
        EXPECT_THAT(brokenBy("cad/xml/a.cpp", included).size(), 1U) << included;
}

TEST_F(LayerScanner, LibraryAndContractIncludeHeadersOfOneSystemNowhereButInThePlatformHeader)
{
    EXPECT_THAT(brokenBy("import/Platform.h", "<windows.h>"), IsEmpty());
    fs::remove(root / "import/Platform.h");
    for (const char* file : {"host/znUtils/a.h", "import/a.cpp", "converter/a.cpp", "cad/visualization/a.cpp"}) {
        for (const char* included : {"<QString>", "<boost/any.hpp>", "<tinyxml.h>", "<filesystem>"})
            EXPECT_THAT(brokenBy(file, included), IsEmpty()) << included;
        for (const char* included : {"<unistd.h>", "<windows.h>", "<sys/stat.h>", "<X11/Xlib.h>", "<Windows.h>"})
            EXPECT_THAT(brokenBy(file, included).size(), 1U) << file << included;
        fs::remove(root / file);
    }
}

TEST_F(LayerScanner, ConverterProcessSeesTheScenePartOfTheOpenHostOnly)
{
    EXPECT_THAT(brokenBy("tools/ptxconvert/a.cpp", "\"standalone/scenefile/Writer.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("tools/ptxconvert/a.cpp", "\"standalone/session/Session.h\"").size(), 1U);
    EXPECT_THAT(brokenBy("tools/ptxconvert/a.cpp", "\"converter/znPtxConverterJob.h\"").size(), 1U);
}

TEST_F(LayerScanner, ImporterAndToolsSeeEverythingButTestsAndBenches)
{
    EXPECT_THAT(brokenBy("importer/a.cpp", "\"standalone/session/Session.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("importer/a.cpp", "\"loader/znPtxLoaderJob.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("importer/a.cpp", "\"tests/support/Builder.h\"").size(), 1U);
    fs::remove(root / "importer/a.cpp");
    EXPECT_THAT(brokenBy("tools/znimport/a.cpp", "\"importer/Importer.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("tools/znimport/a.cpp", "\"bench/scenegraph/Tree.h\"").size(), 1U);
}

TEST_F(LayerScanner, FollowsAnIncludeBesideTheFileAndUpwards)
{
    write("standalone/session/Session.h", "");
    write("loader/Session.h", "");

    EXPECT_THAT(brokenBy("loader/a.cpp", "\"Session.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("loader/a.cpp", "\"../standalone/session/Session.h\""),
                ElementsAre(BrokenLayer{"loader/a.cpp", 3, "standalone/session/Session.h"}));
}

TEST_F(LayerScanner, SeesIncludesWithBlanksAndIgnoresOtherLines)
{
    write("host/a.h", "// #include \"loader/a.h\"\n  #  include   \"loader/b.h\" // why\nint include = 3;\n");

    EXPECT_THAT(scanLayers(root).broken, ElementsAre(BrokenLayer{"host/a.h", 2, "loader/b.h"}));
}

TEST_F(LayerScanner, AFolderWhoseNameOnlyBeginsLikeALayerIsAnotherFolder)
{
    EXPECT_THAT(brokenBy("standalone/a.h", "\"importers/a.h\""), IsEmpty());
    EXPECT_THAT(brokenBy("import/a.h", "\"importer/a.h\"").size(), 1U);
}
