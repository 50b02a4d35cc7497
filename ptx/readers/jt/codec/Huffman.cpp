#include "ptx/readers/jt/codec/Huffman.h"

#include "ptx/readers/jt/codec/BitReader.h"

namespace ptx::jt::codec
{

namespace
{

struct TreeNode {
    std::uint64_t weight = 0;
    std::uint32_t first = 0;  ///< on bit 1; the entry itself in a leaf
    std::uint32_t second = 0; ///< on bit 0
    bool isLeaf = true;
};

/// A heap whose order of equal weights decides which codes arise.
class WeightHeap
{
public:
    explicit WeightHeap(const std::vector<TreeNode>& nodes) : m_nodes(nodes) {}

    void push(std::uint32_t node)
    {
        m_heap.push_back(node);
        std::size_t i = m_heap.size() - 1;
        for (; i > 1 && weight(m_heap[i / 2]) > weight(node); i /= 2)
            m_heap[i] = m_heap[i / 2];
        m_heap[i] = node;
    }

    std::uint32_t pop()
    {
        const std::uint32_t top = m_heap[1];
        const std::uint32_t last = m_heap.back();
        m_heap.pop_back();
        const std::size_t n = m_heap.size() - 1;
        if (n == 0)
            return top;
        std::size_t i = 1;
        for (std::size_t c = 2; c <= n; i = c, c *= 2) {
            if (c < n && weight(m_heap[c]) > weight(m_heap[c + 1]))
                ++c;
            if (weight(last) < weight(m_heap[c]))
                break;
            m_heap[i] = m_heap[c];
        }
        m_heap[i] = last;
        return top;
    }

private:
    std::uint64_t weight(std::uint32_t node) const { return m_nodes[node].weight; }

    const std::vector<TreeNode>& m_nodes;
    std::vector<std::uint32_t> m_heap{0};
};

} // namespace

Values decodeHuffman(const CodeText& text, const CodeTable& table, const Values& escaped, container::Cursor& cursor)
{
    std::vector<TreeNode> nodes;
    nodes.reserve(2 * table.size());
    WeightHeap heap(nodes);
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        nodes.push_back({table[i].occurrences, i});
        heap.push(i);
    }
    for (std::size_t i = 1; i < table.size(); ++i) {
        const std::uint32_t a = heap.pop();
        const std::uint32_t b = heap.pop();
        nodes.push_back({nodes[a].weight + nodes[b].weight, a, b, false});
        heap.push(static_cast<std::uint32_t>(nodes.size() - 1));
    }
    BitReader bits(text.words, text.flip);
    Values values;
    std::size_t nextEscaped = 0;
    while (values.size() < text.count) {
        const TreeNode* node = &nodes.back();
        while (!node->isLeaf)
            node = &nodes[bits.u(1) ? node->first : node->second];
        if (bits.isBeyond(text.bits))
            return failed(cursor, "an array has fewer bits than its values need");
        const CodeEntry& entry = table[node->first];
        if (entry.symbol != CodeEntry::Escape)
            values.push_back(entry.value);
        else if (nextEscaped < escaped.size())
            values.push_back(escaped[nextEscaped++]);
        else
            return failed(cursor, "an array escapes more often than it has values for");
    }
    return nextEscaped == escaped.size() ? values : failed(cursor, "an array leaves escaped values over");
}

} // namespace ptx::jt::codec
