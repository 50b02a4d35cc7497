#pragma once

#include <tinyxml.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// How the element classes walk over what the parser gives them. For their sources only: no header of the model shows
/// the parser.
namespace HB::XML::CAD
{

/// Name and value of one attribute, as views into the parser's tree.
struct Attribute {
    ///@{
    /// Never null; valid as long as the tree of the parser.
    std::string_view name;
    const char* value;
    ///@}
};

/// The attributes of an element in file order, for a range-based for.
class AttributesOf
{
public:
    /// `element` must outlive this.
    explicit AttributesOf(const TiXmlElement& element) : m_first(element.FirstAttribute()) {}

    /// As much of an iterator as such a loop needs.
    struct Iterator {
        const TiXmlAttribute* attribute; ///< null at the end
        ///@{
        /// The attribute here, the next place, and whether two places differ.
        Attribute operator*() const { return {attribute->NameTStr(), attribute->Value()}; }
        void operator++() { attribute = attribute->Next(); }
        bool operator!=(const Iterator& other) const { return attribute != other.attribute; }
        ///@}
    };
    ///@{
    /// From the first attribute to behind the last.
    Iterator begin() const { return {m_first}; }
    Iterator end() const { return {nullptr}; }
    ///@}

private:
    const TiXmlAttribute* m_first;
};

/// The child nodes of one kind in file order, for a range-based for. `Node` is TiXmlElement or TiXmlText.
template <class Node, TiXmlNode::NodeType type>
class ChildrenOf
{
public:
    /// `element` must outlive this.
    explicit ChildrenOf(const TiXmlElement& element) : m_element(element) {}

    /// As much of an iterator as such a loop needs.
    struct Iterator {
        const TiXmlElement& element; ///< whose children these are
        const TiXmlNode* node;       ///< null at the end
        ///@{
        /// The child here, the next place, and whether two places differ.
        const Node& operator*() const { return static_cast<const Node&>(*node); }
        void operator++() { node = firstOfType(element, element.IterateChildren(node)); }
        bool operator!=(const Iterator& other) const { return node != other.node; }
        ///@}
    };
    ///@{
    /// From the first child of this kind to behind the last.
    Iterator begin() const { return {m_element, firstOfType(m_element, m_element.IterateChildren(nullptr))}; }
    Iterator end() const { return {m_element, nullptr}; }
    ///@}

private:
    static const TiXmlNode* firstOfType(const TiXmlElement& element, const TiXmlNode* node)
    {
        while (node && node->Type() != type)
            node = element.IterateChildren(node);
        return node;
    }

    const TiXmlElement& m_element;
};

///@{
/// The child elements, and the pieces of text, of an element.
using ChildElementsOf = ChildrenOf<TiXmlElement, TiXmlNode::TINYXML_ELEMENT>;
using TextNodesOf = ChildrenOf<TiXmlText, TiXmlNode::TINYXML_TEXT>;
///@}

/// The words of an enumerated attribute, whose first word stands for the value `first` and each further one for the
/// next value.
template <class Enum, std::size_t count>
struct Keywords {
    std::array<std::string_view, count> words; ///< to the letter
    Enum first{};                              ///< the value of the first word

    /// Sets `field` to the value of `word`; an unknown word, or one in another case, changes nothing.
    void read(std::string_view word, Enum& field) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (words[i] == word)
                field = static_cast<Enum>(static_cast<std::size_t>(first) + i);
        }
    }
};

} // namespace HB::XML::CAD
