#include "files/gltf/GltfJson.h"

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

constexpr std::size_t maxDepth = 64;

// With what the parser of the model makes of them, as measured.
constexpr std::uint64_t memoryOfValue = 64;
constexpr std::uint64_t memoryOfContainer = 640;

/// Builds the tree from what the parser meets. (The library's own filter looks through all members of a list each time
/// that one of them ends.)
class TreeBuilder : public Json::json_sax_t
{
public:
    TreeBuilder(ReadTask& task, const MemberFilter& isWanted) : m_task(task), m_isWanted(isWanted) {}

    Json take() { return std::move(m_tree); }

    bool null() override { return add({}); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t&) override { return add(value); }
    bool string(string_t& value) override
    {
        m_task.takeMemory(value.size());
        return add(std::move(value));
    }
    bool binary(binary_t& value) override { return add(std::move(value)); }

    bool start_object(std::size_t) override { return open(Json::object()); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(Json::array()); }
    bool end_array() override { return close(); }

    bool key(string_t& name) override
    {
        if (m_open.back()) {
            m_isSkipping = !m_isWanted(static_cast<int>(m_open.size()), name);
            m_key = std::move(name);
        }
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override
    {
        // The library puts its own name in brackets in front.
        m_task.fail(ErrorCode::Damaged, QString::fromUtf8(error.what()).section(QStringLiteral("] "), 1),
                    tr("byte %1").arg(static_cast<qulonglong>(position)));
    }

private:
    /// Puts `value` where the parser stands; null where nothing is wanted.
    Json* place(Json value)
    {
        if (m_open.empty()) {
            m_tree = std::move(value);
            return &m_tree;
        }
        Json* parent = m_open.back();
        if (!parent || std::exchange(m_isSkipping, false))
            return nullptr;
        if (parent->is_array())
            return &parent->emplace_back(std::move(value));
        return &((*parent)[m_key] = std::move(value));
    }

    bool add(Json value)
    {
        m_task.takeMemory(memoryOfValue);
        place(std::move(value));
        return true;
    }

    bool open(Json container)
    {
        if (m_open.size() == maxDepth)
            m_task.fail(ErrorCode::Damaged, tr("the JSON text is nested too deeply"));
        m_task.takeMemory(memoryOfContainer);
        m_open.push_back(place(std::move(container)));
        return true;
    }

    bool close()
    {
        m_open.pop_back();
        return true;
    }

    ReadTask& m_task;
    const MemberFilter& m_isWanted;
    Json m_tree;
    std::vector<Json*> m_open; ///< the containers around the place; null for those that are left out
    std::string m_key;
    bool m_isSkipping = false; ///< the member whose value comes next is left out
};

} // namespace

nlohmann::json parseJson(std::string_view text, ReadTask& task, const MemberFilter& isWanted)
{
    TreeBuilder builder(task, isWanted);
    Json::sax_parse(text, &builder);
    return builder.take();
}

} // namespace files::gltf
