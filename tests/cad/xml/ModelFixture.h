#pragma once

#include "cad/xml/CADDocument.h"
#include "tests/cad/xml/ModelTestAccess.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace HB::XML::CAD
{

/// A document and a folder of its own, with blanks and umlauts in its name, that goes with the test.
class ModelTest : public testing::Test
{
protected:
    using Texts = std::vector<std::string>;
    using Floats = std::vector<float>;

    ModelTest();
    ~ModelTest() override;

    /// Writes a file into the folder.
    std::string write(std::string_view name, std::string_view bytes) const;

    /// Loads a whole file.
    void load(std::string_view text);

    /// Loads a file whose `ProductDef` has this content and these attributes.
    CADProductDef& loadProductDef(std::string_view content, std::string_view attributes = "id='pd'");

    /// Loads a file with one element in the first instance graph or in the product definition; gives its object.
    template <class Element>
    Element& loadInGraph(std::string_view element)
    {
        auto& productDef = loadProductDef("<InstanceGraph id='g'>" + std::string(element) + "</InstanceGraph>");
        return firstChild<Element>(*productDef.getInstanceGraph(0));
    }
    template <class Element>
    Element& loadInProductDef(std::string_view element)
    {
        return firstChild<Element>(loadProductDef(element));
    }

    template <class Element>
    static Element& firstChild(const CADBase& parent, std::size_t index = 0)
    {
        return dynamic_cast<Element&>(*ModelTestAccess::children(parent).at(index));
    }

    std::filesystem::path m_folder;
    CADDocument m_document;
};

/// Whether an id is the parent's id, the suffix and the address of the element.
testing::AssertionResult isGeneratedId(const CADBase& element, const std::string& parentId, const std::string& suffix);

/// What loading a text throws: the exception's type and text; "loaded" without exception.
struct LoadOutcome {
    std::string type;
    std::string text;
    bool operator==(const LoadOutcome&) const = default;
};
void PrintTo(const LoadOutcome& outcome, std::ostream* out);

inline const LoadOutcome loaded{"loaded", ""};
extern const LoadOutcome plainException;

/// Loads a file into a document.
LoadOutcome outcomeOf(CADDocument& document, const std::string& fileName);

} // namespace HB::XML::CAD
