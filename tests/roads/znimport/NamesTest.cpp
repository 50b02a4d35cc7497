// Names out of files on their way to the terminal, by format.

#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/IgesText.h"
#include "tests/support/StepText.h"
#include "tests/support/jt/FileWriter.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;

namespace
{

/// Clears the screen, sets the title, takes a control of one byte in two, turns the direction of writing.
const std::string Hostile = "q\x1b[2J\x1b]0;owned\x07\u009b31m\u202ez";
const std::string Printed = "q\\x1b[2J\\x1b]0;owned\\x07\\xc2\\x9b31m\\xe2\\x80\\xaez";

std::string stepWith(const std::string& name, const std::string& file)
{
    ptxtest::StepText step;
    const ptxtest::StepProduct top = step.product("top");
    ptxtest::StepProduct own = step.product(name);
    step.box(own, {0, 0, 0}, {1, 1, 1});
    step.place(top, own, name, {0, 0, 0}, {0, 0, 1}, {1, 0, 0});
    const ptxtest::StepProduct part = step.product("part");
    step.keepIn(part, file);
    step.place(top, part, "part", {5, 0, 0}, {0, 0, 1}, {1, 0, 0});
    return step.text();
}

std::string jtWith(const std::string& name, const std::string& file)
{
    jttest::FileWriter jt;
    jt.partition(0, {1, 3}, "assembly.jt");
    jt.part(1, {2});
    jt.property(1, "JT_PROP_NAME", name);
    jt.property(1, "Note", name);
    jt.triangle(2, 7);
    jt.partition(3, {}, file);
    return jt.file();
}

std::string gltfWith(const std::string& name, const std::string& picture)
{
    return R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
           R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],"bufferViews":[{"buffer":0,"byteLength":36}],)"
           R"("images":[{"uri":")" +
           picture + R"("}],"textures":[{"source":0}],"materials":[{"name":")" + name +
           R"(","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}],)"
           R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}],)"
           R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],"nodes":[{"mesh":0,"name":")" +
           name + R"(","extras":{"Note":")" + name + R"("}}],"scenes":[{"nodes":[0]}],"scene":0})";
}

/// As JSON has control characters.
std::string inJson(std::string text)
{
    for (const auto& [raw, code] : {std::pair("\x1b", "\\u001b"), std::pair("\x07", "\\u0007")})
        for (std::size_t at = text.find(raw); at != text.npos; at = text.find(raw, at + 1))
            text.replace(at, 1, code);
    return text;
}

class Names : public ToolRun
{
protected:
    /// Everything that the program can print of a file.
    std::string printed(const char* file, const std::string& content)
    {
        const Ending ending = znimport({write(file, QByteArray::fromStdString(content)), text("--tree-attributes"),
                                        text("--variants"), text("--trace")});
        EXPECT_TRUE(ending.exitCode == 0 || ending.exitCode == 3) << ending.errors.toStdString();
        const std::string all = ending.output.toStdString() + ending.errors.toStdString();
        for (const char* control : {"\x1b", "\x07", "\u009b", "\u202e"})
            EXPECT_THAT(all, Not(HasSubstr(control))) << file;
        return all;
    }
};

} // namespace

TEST_F(Names, OfStepArePrintedWithoutControlCharacters)
{
    // In its text each of them is a code, and the converter makes blanks of those below U+0020.
    const std::string coded = R"(q\X\1B[2J\X\1B]0;owned\X\07\X2\009B\X0\31m\X2\202E\X0\z)";
    const std::string shown = "q [2J ]0;owned \\xc2\\x9b31m\\xe2\\x80\\xaez";
    const std::string all = printed("a.stp", stepWith(coded, "gone" + coded + ".stp"));
    EXPECT_THAT(all, HasSubstr("      " + shown + " [Transform3D]\n"));
    EXPECT_THAT(all, HasSubstr("gone" + shown + ".stp: "));
}

TEST_F(Names, OfJtArePrintedWithoutControlCharacters)
{
    // The converter exchanges those below U+0020.
    const std::string shown = "q\uFFFD[2J\uFFFD]0;owned\uFFFD";
    const std::string all = printed("a.jt", jtWith(Hostile, "gone" + Hostile + ".jt"));
    EXPECT_THAT(all, HasSubstr("    " + shown));
    EXPECT_THAT(all, HasSubstr("gone" + shown));
}

TEST_F(Names, OfIgesArePrintedWithoutControlCharacters)
{
    ptxtest::IgesText iges;
    iges.patch({0, 0, 0}, {30, 0, 0}, {0, 20, 0}, {30, 20, 0}, 2, "q\x1b[2J\x07z");
    printed("a.igs", iges.text());
}

TEST_F(Names, OfStlArePrintedWithoutControlCharacters)
{
    const std::string all = printed("a.stl", "solid " + Hostile +
                                                 "\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                                                 "vertex 0 1 0\nendloop\nendfacet\nendsolid\n");
    EXPECT_THAT(all, HasSubstr(Printed));
}

TEST_F(Names, OfObjArePrintedWithoutControlCharacters)
{
    const std::string all = printed("a.obj", "mtllib gone" + Hostile + ".mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\no " + Hostile +
                                                 "\nusemtl " + Hostile + "\nf 1 2 3\n");
    EXPECT_THAT(all, HasSubstr("gone" + Printed + ".mtl"));
    EXPECT_THAT(all, HasSubstr("'" + Printed + "'"));
}

TEST_F(Names, OfGltfArePrintedWithoutControlCharacters)
{
    const std::string all = printed("a.gltf", gltfWith(inJson(Hostile), "gone" + inJson(Hostile) + ".png"));
    EXPECT_THAT(all, HasSubstr("'" + Printed + "'"));
}

TEST_F(Names, OfVrmlArePrintedWithoutControlCharacters)
{
    // Names of nodes hold no control characters below U+0020, and no brackets.
    const std::string all =
        printed("a.wrl", "#VRML V2.0 utf8\nDEF q\u009b31m\u202ez Shape { geometry Box { size 1 2 3 } "
                         "}\nInline { url \"gone" +
                             Hostile + ".wrl\" }\n");
    EXPECT_THAT(all, HasSubstr("q\\xc2\\x9b31m\\xe2\\x80\\xaez"));
    EXPECT_THAT(all, HasSubstr("gone" + Printed + ".wrl"));
}

TEST_F(Names, OfPlmxmlArePrintedWithoutControlCharacters)
{
    // Of the control characters XML 1.0 takes none below U+0020.
    const std::string name = "q\u009b31m\u202ez";
    const std::string all =
        printed("a.plmxml", "<PLMXML><ProductDef id='d'><InstanceGraph rootRefs='i'><Instance id='i' name='" + name +
                                "' partRef='p'/></InstanceGraph><Part id='p' name='" + name +
                                "' type='solid'><Representation id='r' location='gone" + name +
                                ".stl'/></Part></ProductDef></PLMXML>");
    EXPECT_THAT(all, HasSubstr("goneq\\xc2\\x9b31m\\xe2\\x80\\xaez.stl"));
}

TEST_F(Names, OfTheFilesThemselvesArePrintedWithoutControlCharacters)
{
    const std::string name = "a" + Hostile + ".obj";
    EXPECT_THAT(printed(name.c_str(), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"), HasSubstr("a" + Printed + ".obj"));
    const std::string broken = "b" + Hostile + ".gltf";
    const Ending ending = znimport({write(broken.c_str(), "{")});
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_THAT(ending.errors.toStdString(), HasSubstr("b" + Printed + ".gltf"));
    EXPECT_THAT(ending.errors.toStdString(), Not(HasSubstr("\x1b")));
}

/// The CAD kernel opens no file whose name has more than 240 bytes.
TEST_F(Names, LongNamesOfStepFilesOpen)
{
    const QByteArray name = QByteArray(250 - 4, 'n') + ".stp";
    const QString file = write(name.constData(), QByteArray::fromStdString(stepWith("own", "part.stp")));
    const Ending end = znimport({file, text("--tree")});
    EXPECT_TRUE(end.output.contains(text("own"))) << end.errors.toStdString();
}
