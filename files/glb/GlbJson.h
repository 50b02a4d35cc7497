#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace files::glb
{

/// JSON whose numbers are floats, written with as many digits as tell them apart.
using Json = nlohmann::basic_json<std::map, std::vector, std::string, bool, std::int64_t, std::uint64_t, float>;

/// The text of `json`; what is no UTF-8 in it is replaced.
inline std::string textOf(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// A list that is kept as text, so that a million entries take no more room than they do in the file.
class JsonList
{
public:
    /// Returns the index of the new entry.
    std::size_t add(const Json& entry) { return addText(files::glb::textOf(entry)); }
    std::size_t addText(std::string_view entry)
    {
        if (m_size > 0)
            m_text += ',';
        m_text += entry;
        return m_size++;
    }
    std::size_t size() const { return m_size; }
    /// The entries with commas between them.
    const std::string& entries() const { return m_text; }
    std::string text() const { return '[' + m_text + ']'; }

private:
    std::string m_text;
    std::size_t m_size = 0;
};

} // namespace files::glb
