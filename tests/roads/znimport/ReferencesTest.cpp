// Which files a file may name, by format and by way of naming them, through the whole program.

#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/StepText.h"
#include "tests/support/jt/FileWriter.h"

#include <gmock/gmock.h>

#include <QRegularExpression>

#include <sys/stat.h>

#include <filesystem>
#include <map>

namespace
{

namespace fs = std::filesystem;

using ptxtest::StepProduct;
using ptxtest::StepText;
using testing::HasSubstr;

const std::map<std::string, std::string> Targets = {{"gltf", "part.bin"}, {"obj", "part.mtl"}, {"wrl", "part.wrl"},
                                                    {"stp", "part.stp"},  {"jt", "part.jt"},   {"plmxml", "part.stl"}};

std::string boxOf(const char* name)
{
    StepText step;
    StepProduct part = step.product(name);
    step.box(part, {0, 0, 0}, {30, 20, 10});
    return step.text();
}

std::string triangleInJt()
{
    jttest::FileWriter file;
    file.partition(0, {1}, "part.jt");
    file.part(1, {2});
    file.triangle(2, 5);
    return file.file();
}

/// With a part of its own and a place for the one in the other file.
std::string jtNaming(const std::string& name)
{
    jttest::FileWriter file;
    file.partition(0, {1, 3}, "assembly.jt");
    file.part(1, {2});
    file.triangle(2, 7);
    file.partition(3, {}, name);
    file.property(3, "JT_PROP_NAME", "place");
    return file.file();
}

/// A sound file that another one may name, of the name's kind.
std::string contentOf(const std::string& format)
{
    if (format == "gltf")
        return std::string("\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x80?\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x80?\0\0\0\0", 36);
    if (format == "obj")
        return "newmtl red\nKd 1 0 0\n";
    if (format == "wrl")
        return "#VRML V2.0 utf8\nShape { geometry Box { size 1 2 3 } }\n";
    if (format == "stp")
        return boxOf("part");
    if (format == "jt")
        return triangleInJt();
    return "solid a\nfacet normal 0 0 0\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n"
           "endsolid a\n";
}

/// A file of the format that names `name` and has something else to show, where that is possible.
std::string fileNaming(const std::string& format, const std::string& name)
{
    if (format == "gltf")
        return R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":36,"uri":")" + name +
               R"("}],"bufferViews":[{"buffer":0,"byteLength":36}],"accessors":[{"bufferView":0,"componentType":5126,)"
               R"("count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}],)"
               R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],"nodes":[{"mesh":0}],)"
               R"("scenes":[{"nodes":[0]}],"scene":0})";
    if (format == "obj")
        return "mtllib " + name + "\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl red\nf 1 2 3\n";
    if (format == "wrl")
        return "#VRML V2.0 utf8\nShape { geometry Sphere { radius 2 } }\nInline { url \"" + name + "\" }\n";
    if (format == "stp") {
        StepText step;
        const StepProduct top = step.product("top");
        StepProduct own = step.product("own");
        step.box(own, {0, 0, 0}, {1, 1, 1});
        step.place(top, own, "own", {0, 0, 0}, {0, 0, 1}, {1, 0, 0});
        const StepProduct part = step.product("part");
        step.keepIn(part, name);
        step.place(top, part, "part", {5, 0, 0}, {0, 0, 1}, {1, 0, 0});
        return step.text();
    }
    if (format == "jt")
        return jtNaming(name);
    return "<PLMXML><ProductDef id='d'><InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p'/>"
           "</InstanceGraph><Part id='p' name='P' type='solid'><Representation id='r' location='" +
           name + "'/></Part></ProductDef></PLMXML>";
}

/// A triangle that bears the picture `name`, for OBJ by the library "input.mtl".
std::string fileWithPicture(std::string_view format, const std::string& name)
{
    if (format == "obj")
        return "mtllib input.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nusemtl red\nf 1/1 2/1 3/1\n";
    if (format == "wrl")
        return "#VRML V2.0 utf8\nShape { appearance Appearance { texture ImageTexture { url \"" + name +
               "\" } } geometry Sphere { } }\n";
    return "ply\nformat ascii 1.0\ncomment TextureFile " + name +
           "\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\nproperty float u\nproperty float "
           "v\n"
           "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
           "0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n3 0 1 2\n";
}

/// What comes of a name.
enum class End {
    In,      ///< the named file came in
    Missing, ///< it counts as one that is not there
    Refused  ///< it is refused, with the option that allows it
};

class References : public ToolRun
{
protected:
    References()
    {
        for (const char* folder : {"top", "top/sub", "outside"})
            QDir().mkpath(path(folder));
        for (const auto& [format, name] : Targets) {
            write(("top/sub/" + name).c_str(), QByteArray::fromStdString(contentOf(format)));
            write(("outside/" + name).c_str(), QByteArray::fromStdString(contentOf(format)));
            const std::string extension = fs::path(name).extension().string();
            fs::create_symlink("../outside/" + name, path(("top/link" + extension).c_str()).toStdString());
            ::mkfifo(path(("top/pipe" + extension).c_str()).toStdString().c_str(), 0600);
        }
    }

    Ending run(const std::string& format, const std::string& name, const QStringList& options)
    {
        write(("top/input." + format).c_str(), QByteArray::fromStdString(fileNaming(format, name)));
        return znimport(QStringList{path(("top/input." + format).c_str()), text("--tree")} + options);
    }

    /// The end of a run, by what it printed.
    static End endOf(const std::string& format, const Ending& ending)
    {
        if (ending.errors.contains(text("refused, as")))
            return End::Refused;
        const bool isMissing = ending.errors.contains(text("missing")) || ending.errors.contains(text("not there")) ||
                               ending.errors.contains(text("does not exist")) ||
                               ending.errors.contains(text("not on this computer")) ||
                               ending.errors.contains(text("no regular file"));
        const int partial = format == "gltf" ? 1 : format == "stp" || format == "jt" || format == "plmxml" ? 3 : 0;
        EXPECT_EQ(ending.exitCode, isMissing ? partial : 0) << ending.errors.toStdString();
        return isMissing ? End::Missing : End::In;
    }

    std::string outside() const { return path("outside").toStdString(); }
};

/// `%s` is the extension of the target, `%n` its name, `%o` the folder outside.
struct Escape {
    const char* name;
    const char* way;
    End parts;                ///< of documents with files.references=parts
    End below;                ///< of documents with files.references=below
    End bytes;                ///< of buffers in every setting
    const char* without = ""; ///< formats in which the way means something else
};

const Escape Escapes[] = {
    {"below", "sub/%n", End::In, End::In, End::In},
    {"through a folder and back", "sub/../sub/%n", End::In, End::In, End::In},
    {"absolute", "%o/%n", End::In, End::Refused, End::Refused},
    {"dots", "../outside/%n", End::In, End::Refused, End::Refused},
    {"hidden dots", "sub/../../outside/%n", End::In, End::Refused, End::Refused},
    {"link", "link%s", End::In, End::Refused, End::Refused},
    {"http", "http://example.invalid/%n", End::Missing, End::Missing, End::Missing},
    {"device", "/dev/zero", End::Missing, End::Refused, End::Refused, "stp jt plmxml"},
    {"pipe", "pipe%s", End::Missing, End::Missing, End::Missing},
};

std::string filled(std::string text, const std::string& target, const std::string& outside)
{
    const auto exchange = [&text](const char* mark, const std::string& value) {
        for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark))
            text.replace(at, 2, value);
    };
    exchange("%n", target);
    exchange("%s", fs::path(target).extension().string());
    exchange("%o", outside);
    return text;
}

} // namespace

TEST_F(References, EachWayOutHasItsEndInEachFormat)
{
    for (const auto& [format, target] : Targets)
        for (const Escape& escape : Escapes)
            for (const char* rule : {"parts", "below"}) {
                if (std::string_view(escape.without).find(format) != std::string_view::npos)
                    continue;
                const bool isBytes = format == "gltf";
                const End expected = isBytes                             ? escape.bytes
                                     : std::string_view(rule) == "parts" ? escape.parts
                                                                         : escape.below;
                const Ending ending = run(format, filled(escape.way, target, outside()),
                                          {text("--set"), text("files.references=") + text(rule)});
                EXPECT_EQ(endOf(format, ending), expected)
                    << format << ", " << escape.name << ", " << rule << ": " << ending.errors.toStdString();
            }
}

TEST_F(References, PicturesEndAsBuffersDoInEachFormat)
{
    for (const char* folder : {"top/sub/oak.png", "outside/oak.png"})
        write(folder, "\x89PNG\r\n\x1a\n");
    fs::create_symlink("../outside/oak.png", path("top/link.png").toStdString());
    ::mkfifo(path("top/pipe.png").toStdString().c_str(), 0600);
    for (const char* format : {"obj", "wrl", "ply"})
        for (const Escape& escape : Escapes) {
            const std::string name = filled(escape.way, "oak.png", outside());
            write("top/input.mtl", QByteArray::fromStdString("newmtl red\nmap_Kd " + name + "\n"));
            write((std::string("top/input.") + format).c_str(),
                  QByteArray::fromStdString(fileWithPicture(format, name)));
            const Ending ending = znimport({path((std::string("top/input.") + format).c_str()), text("--tree")});
            EXPECT_EQ(endOf(format, ending), escape.bytes)
                << format << ", " << escape.name << ": " << ending.errors.toStdString();
        }
}

TEST_F(References, PercentSignsAndLettersOfAnotherCaseAreNoWayOut)
{
    const QStringList below{text("--set"), text("files.references=below")};
    EXPECT_EQ(endOf("gltf", run("gltf", "%2e%2e/outside/part.bin", {})), End::Refused);
    EXPECT_EQ(endOf("gltf", run("gltf", "..%2Foutside%2fpart.bin", {})), End::Refused);
    EXPECT_EQ(endOf("plmxml", run("plmxml", "%2e%2e/outside/part.stl", below)), End::Refused);
    EXPECT_EQ(endOf("plmxml", run("plmxml", "file://" + outside() + "/part.stl", below)), End::Refused);
    EXPECT_EQ(endOf("wrl", run("wrl", "file://" + outside() + "/part.wrl", below)), End::Refused);
    EXPECT_EQ(endOf("gltf", run("gltf", "file://" + outside() + "/part.bin", {})), End::Missing);
    EXPECT_EQ(endOf("stp", run("stp", "../OUTSIDE/PART.stp", below)), End::Refused);
    EXPECT_EQ(endOf("stp", run("stp", "../OUTSIDE/PART.stp", {})), End::In);
    EXPECT_EQ(endOf("stp", run("stp", "SUB/Part.stp", below)), End::In);
    EXPECT_EQ(endOf("plmxml", run("plmxml", "SUB/Part.stl", below)), End::In);
    EXPECT_EQ(endOf("jt", run("jt", "..\\OUTSIDE\\PART.jt", below)), End::Refused);
    EXPECT_EQ(endOf("jt", run("jt", "..\\OUTSIDE\\PART.jt", {})), End::In);
    EXPECT_EQ(endOf("jt", run("jt", "SUB\\Part.jt", below)), End::In);
    EXPECT_EQ(endOf("jt", run("jt", "%2e%2e/outside/part.jt", {})), End::Missing) << "no escapes in its names";
}

TEST_F(References, NoneFollowsNoDocumentAndStillReadsBuffers)
{
    const QStringList none{text("--set"), text("files.references=none")};
    for (const char* format : {"obj", "wrl", "stp", "jt", "plmxml"})
        EXPECT_EQ(endOf(format, run(format, "sub/" + Targets.at(format), none)), End::Refused) << format;
    EXPECT_EQ(endOf("gltf", run("gltf", "sub/part.bin", none)), End::In);
}

TEST_F(References, AllowedFoldersAreOpenToAll)
{
    const QStringList options{text("--set"), text("files.references=below"), text("--allow-references"),
                              path("outside")};
    for (const auto& [format, target] : Targets) {
        EXPECT_EQ(endOf(format, run(format, "../outside/" + target, options)), End::In) << format;
        EXPECT_EQ(endOf(format, run(format, filled("link%s", target, {}), options)), End::In) << format;
    }
}

TEST_F(References, WithBelowNothingTellsWhetherTheRefusedFileIsThere)
{
    const QStringList below{text("--set"), text("files.references=below")};
    for (const auto& [format, target] : Targets) {
        const std::string gone = "gone" + fs::path(target).extension().string();
        const Ending there = run(format, outside() + "/" + target, below);
        const Ending missing = run(format, outside() + "/" + gone, below);
        const auto plain = [&](QString errors) {
            // How much is seen of the progress is a matter of time.
            errors.remove(QRegularExpression(QStringLiteral("^input\\.[^\n]*\n"), QRegularExpression::MultilineOption));
            return errors.replace(QString::fromStdString(gone), QString::fromStdString(target)).toStdString();
        };
        EXPECT_EQ(there.exitCode, missing.exitCode) << format;
        EXPECT_EQ(plain(there.errors), plain(missing.errors)) << format;
        EXPECT_EQ(there.output.toStdString(), plain(missing.output)) << format;
    }
}

TEST_F(References, ARefusedPartIsAMissingOneWithTheOptionThatAllowsIt)
{
    const Ending ending = run("stp", "../outside/part.stp", {text("--set"), text("files.references=below")});
    EXPECT_EQ(ending.exitCode, 3);
    EXPECT_THAT(ending.errors.toStdString(),
                HasSubstr(outside() + "/part.stp: refused, as it does not lie below the folder of the imported file "
                                      "(files.references=below); --allow-references DIR allows it"));
}

/// The middle one lies in a folder of its own, and the folder of the file that was asked for counts.
TEST_F(References, PartsOfPartsAreHeldToTheFolderOfTheFileThatWasAskedFor)
{
    write("top/sub/middle.stp", QByteArray::fromStdString(fileNaming("stp", "../../outside/part.stp")));
    write("top/leaf.stp", QByteArray::fromStdString(boxOf("leaf")));
    const QStringList below{text("--set"), text("files.references=below")};
    EXPECT_EQ(endOf("stp", run("stp", "sub/middle.stp", below)), End::Refused);
    write("top/sub/middle.stp", QByteArray::fromStdString(fileNaming("stp", "../leaf.stp")));
    EXPECT_EQ(endOf("stp", run("stp", "sub/middle.stp", below)), End::In);
}
