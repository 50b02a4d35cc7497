#include "files/gltf/GltfJson.h"

#include "files/Failure.h"

#include <gtest/gtest.h>

namespace
{

using files::gltf::parseJson;
using nlohmann::json;

class GltfJsonTest : public testing::Test
{
protected:
    json parse(
        std::string_view text, const files::gltf::MemberFilter& isWanted = [](int, auto) { return true; })
    {
        return parseJson(text, m_task, isWanted);
    }

    std::string errorOf(std::string_view text)
    {
        try {
            return parse(text).dump();
        } catch (const files::Failure& failure) {
            const files::Note note = failure.error();
            return (note.message + QStringLiteral(" (") + note.place + QStringLiteral(")")).toStdString();
        }
    }

    files::ReadTask m_task{QStringLiteral("a.gltf"), {}};
};

TEST_F(GltfJsonTest, EveryKindOfValueArrives)
{
    const char* text = R"({"n": null, "b": [true, false], "i": [-7, 18446744073709551615, 2.5e3], "s": "\u00e4",
                           "o": {"a": [[], {}, [{"x": 1}]]}})";
    EXPECT_EQ(parse(text), json::parse(text));
    EXPECT_EQ(parse("7"), json(7));
}

TEST_F(GltfJsonTest, OfTwoMembersOfOneNameTheLastCounts)
{
    EXPECT_EQ(parse(R"({"a": {"x": 1}, "a": [2]})"), json::parse(R"({"a": [2]})"));
}

TEST_F(GltfJsonTest, UnwantedMembersAreLeftOutWithAllThatIsInThem)
{
    const auto isWanted = [](int depth, std::string_view key) { return key != "x" && !(depth == 1 && key == "y"); };
    EXPECT_EQ(
        parse(R"({"x": 1, "y": {"a": [1, {"b": 2}]}, "a": {"x": [[{"x": 3}]], "y": 4, "z": [{"x": 5}, 6]}})", isWanted),
        json::parse(R"({"a": {"y": 4, "z": [{}, 6]}})"));
}

TEST_F(GltfJsonTest, SixtyFourLevelsAreReadAndOneMoreIsRefusedAtOnce)
{
    EXPECT_EQ(parse(std::string(64, '[') + std::string(64, ']')).dump(), std::string(64, '[') + std::string(64, ']'));
    EXPECT_EQ(errorOf(std::string(65, '[') + std::string(65, ']')), "the JSON text is nested too deeply ()");
    EXPECT_EQ(errorOf(std::string(1'000'000, '[')), "the JSON text is nested too deeply ()");
}

TEST_F(GltfJsonTest, DamageIsToldWithItsByte)
{
    EXPECT_EQ(errorOf("[1, 2"), "parse error at line 1, column 6: syntax error while parsing array - unexpected end of "
                                "input; expected ']' (byte 6)");
    EXPECT_EQ(errorOf("[1e999]"), "number overflow parsing '1e999' (byte 6)");
}

} // namespace
