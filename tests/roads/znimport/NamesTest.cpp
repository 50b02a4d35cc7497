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

/// The CAD kernel opens no file whose name has more than 240 bytes.
TEST_F(Names, LongNamesOfStepFilesOpen)
{
    const QByteArray name = QByteArray(250 - 4, 'n') + ".stp";
    const QString file = write(name.constData(), QByteArray::fromStdString(stepWith("own", "part.stp")));
    const Ending end = znimport({file, text("--tree")});
    EXPECT_TRUE(end.output.contains(text("own"))) << end.errors.toStdString();
}

} // namespace
