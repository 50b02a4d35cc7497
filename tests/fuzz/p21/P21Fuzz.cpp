// Any bytes as a text of STEP records: whatever the number of threads, the same records, all of them within the text.
//
// zn_p21_fuzz -dict=<this folder>/p21.dict <a folder for findings> <this folder>/corpus

#include "ptx/readers/step/p21/EntityIndex.h"
#include "ptx/readers/step/p21/Scan.h"

#include <algorithm>
#include <cstdlib>

using namespace ptx::step::p21;

namespace
{

void require(bool condition)
{
    if (!condition)
        std::abort();
}

struct Seen {
    Role role;
    std::uint32_t number;
    std::uint64_t offset;
    std::string_view type;

    bool operator==(const Seen&) const = default;
};

/// What the records say, without the pieces that they lie in.
struct Content {
    std::vector<Seen> records;
    std::vector<std::pair<Kind, std::string_view>> parameters;

    bool operator==(const Content&) const = default;
};

void addParameters(Content& content, const Piece& piece, std::size_t at)
{
    const Record& record = piece.records[at];
    require(record.firstParameter + std::size_t{record.parameterCount} <= piece.parameters.size());
    for (std::uint32_t i = 0; i < record.parameterCount; ++i) {
        const Parameter& parameter = piece.parameters[record.firstParameter + i];
        const bool hasText = parameter.kind != Kind::Reference && parameter.kind != Kind::List;
        require(parameter.kind != Kind::List || parameter.value < at);
        content.parameters.emplace_back(parameter.kind, hasText ? piece.textOf(parameter) : std::string_view());
        require(!hasText || content.parameters.back().second.size() == parameter.length);
    }
}

Content contentOf(const Records& records)
{
    Content content;
    for (const Piece& piece : records.pieces)
        for (std::size_t i = 0; i < piece.records.size(); ++i) {
            const Record& record = piece.records[i];
            content.records.push_back({record.role, record.number, piece.begin + record.offset, piece.typeOf(record)});
            addParameters(content, piece, i);
        }
    return content;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Records one = scan(text, 1);
    const Records several = scan(text, 4, 16);
    require(contentOf(one) == contentOf(several));
    require(one.isComplete == several.isComplete && one.damages().size() == several.damages().size());
    const EntityIndex index(one);
    for (const Piece& piece : one.pieces)
        for (const Record& record : piece.records)
            require(record.role != Role::Entity || index.recordOf(record.number) > 0);
    for (const Damage& damage : one.damages())
        require(damage.offset <= size && !describe(text, damage).empty());
    return 0;
}
