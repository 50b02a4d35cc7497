#include "scene/ViewTags.h"

#include "scene/Tags.h"

#include <charconv>
#include <cmath>
#include <span>
#include <string_view>

namespace osg
{

namespace
{

constexpr std::string_view AspectKey = "ptx::view-aspect=";
constexpr std::string_view SectionKey = "ptx::view-section=";
constexpr std::string_view InFrontTag = "ptx::view-annotations-in-front";

std::string written(std::string_view key, std::span<const float> numbers)
{
    std::string text(key);
    for (const float number : numbers) {
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        text += (text.size() > key.size() ? " " : "") + std::string(digits, end);
    }
    return text;
}

/// Whether `tag` is `numbers` with `key` before them, which it then gets.
bool read(std::string_view tag, std::string_view key, std::span<float> numbers)
{
    if (!tag.starts_with(key))
        return false;
    const char* next = tag.data() + key.size();
    const char* const end = tag.data() + tag.size();
    for (float& number : numbers) {
        while (next != end && *next == ' ')
            ++next;
        const auto [rest, error] = std::from_chars(next, end, number);
        if (error != std::errc() || !std::isfinite(number))
            return false;
        next = rest;
    }
    return next == end;
}

} // namespace

std::vector<std::string> tagsFor(const ViewFacts& facts)
{
    std::vector<std::string> tags;
    if (facts.aspect > 0)
        tags.push_back(written(AspectKey, {&facts.aspect, 1}));
    for (const HalfSpace& section : facts.sections)
        tags.push_back(written(SectionKey, section));
    if (facts.areAnnotationsInFront)
        tags.emplace_back(InFrontTag);
    return tags;
}

ViewFacts viewFactsOf(const AttachmentContainerPtr& container)
{
    ViewFacts facts;
    for (const std::string& tag : tagsOf(container)) {
        float aspect = 0;
        facts.areAnnotationsInFront = facts.areAnnotationsInFront || tag == InFrontTag;
        if (HalfSpace section{}; read(tag, SectionKey, section))
            facts.sections.push_back(section);
        else if (read(tag, AspectKey, {&aspect, 1}) && aspect > 0)
            facts.aspect = aspect;
    }
    return facts;
}

} // namespace osg
