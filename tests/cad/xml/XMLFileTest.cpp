#include "cad/xml/CADDocument.h"

#include "tests/cad/xml/ModelFixture.h"

#include <map>
#include <new>
#include <set>

namespace HB::XML::CAD
{

namespace
{

/// Each file of the folder, without its extension, and how its load fails.
std::map<std::string, LoadOutcome> expectedOutcomes()
{
    return {
        {"attribute_repeated", plainException},
        {"attribute_without_quotes_end", plainException},
        {"attribute_without_value", plainException},
        {"byte_order_mark_only", plainException},
        {"cdata_unterminated", plainException},
        {"character_cut_at_end", plainException},
        {"character_cut_in_value", plainException},
        {"comment_unterminated", plainException},
        {"comment_unterminated_behind_root", plainException},
        {"declaration_cut_off", plainException},
        {"declaration_hides_root", plainException},
        {"declaration_only", plainException},
        {"doctype_with_internal_subset", plainException},
        {"element_unclosed", plainException},
        {"elements_crossed", plainException},
        {"empty", plainException},
        {"end_tag_behind_root", plainException},
        {"end_tag_only", plainException},
        {"endless_reference", plainException},
        {"lone_angle_bracket", plainException},
        {"material_infinite_number", {"std::bad_alloc", std::bad_alloc().what()}},
        {"material_word", {"std::bad_alloc", std::bad_alloc().what()}},
        {"nul_at_end", plainException},
        {"nul_in_text", plainException},
        {"root_in_lower_case", plainException},
        {"root_with_prefix", plainException},
        {"text_before_root", plainException},
        {"text_only", plainException},
        {"transform_beyond_double", {"std::out_of_range", "stod argument out of range"}},
        {"transform_beyond_float_last", {"std::out_of_range", "stof argument out of range"}},
        {"transform_cdata_two_blanks", {"std::invalid_argument", "invalid stod argument"}},
        {"transform_empty_cdata", {"std::invalid_argument", "invalid stof argument"}},
        {"transform_word", {"std::invalid_argument", "invalid stod argument"}},
        {"transform_word_last", {"std::invalid_argument", "invalid stof argument"}},
        {"utf16", plainException},
        {"white_space_only", plainException},
    };
}

const std::filesystem::path folder = ZN_CADXML_MALFORMED_FOLDER;

} // namespace

TEST(MalformedFiles, EachFailsInItsOwnWay)
{
    for (const auto& [name, expected] : expectedOutcomes()) {
        CADDocument document;
        EXPECT_EQ(outcomeOf(document, (folder / (name + ".plmxml")).string()), expected) << name;
        EXPECT_EQ(document.getProductDefCount(), 0U) << name;
        EXPECT_TRUE(document.getFault()) << name;
    }
}

TEST(MalformedFiles, NoneIsLeftOut)
{
    std::set<std::string> expected;
    for (const auto& [name, outcome] : expectedOutcomes())
        expected.insert(name);
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        found.insert(entry.path().stem().string());
    EXPECT_EQ(found, expected);
}

} // namespace HB::XML::CAD
