#include "ptx/readers/step/p21/TypeSearch.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace ptx::step::p21
{

bool hasType(const Records& records, const TypeClass& classOf)
{
    return std::any_of(records.pieces.begin(), records.pieces.end(), [&classOf](const Piece& piece) {
        return std::any_of(piece.types.begin(), piece.types.end(),
                           [&classOf](std::string_view type) { return classOf(type) != NotWanted; });
    });
}

void forEachTyped(const Records& records, const TypeClass& classOf,
                  const std::function<void(int, std::uint32_t)>& found)
{
    for (const Piece& piece : records.pieces) {
        std::vector<int> classes;
        std::transform(piece.types.begin(), piece.types.end(), std::back_inserter(classes), classOf);
        std::uint32_t owner = 0;
        for (const Record& record : piece.records) {
            if (record.role == Role::Entity)
                owner = record.number;
            const bool isTyped = record.role == Role::Entity || record.role == Role::Member;
            if (isTyped && classes[record.type] != NotWanted)
                found(classes[record.type], owner);
        }
    }
}

} // namespace ptx::step::p21
