#pragma once

#include "cad/xml/CADFault.h"
#include "cad/xml/CADIdTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class TiXmlElement;

namespace HB::XML::CAD
{

class CADInstance;
class CADMaterial;
class CADOccurrence;
class CADPart;
class CADProductDef;
class CADProductView;
class CADRepresentation;
class CADTransform;
class CADUserList;

/// One PLMXML file as a tree of plain objects and eight tables of ids.
///
/// A document is constructed empty, loaded once, then only read, by the one thread that loaded it. It owns all its
/// elements. Elements and attributes that the model does not know are skipped without a word. The tables are separate:
/// one id may stand in two of them and mean two elements.
class CADDocument
{
public:
    CADDocument();
    CADDocument(const CADDocument&) = delete;
    CADDocument& operator=(const CADDocument&) = delete;
    virtual ~CADDocument();

    /// What the next load accepts of a file. A depth far over the default needs a stack to match.
    void setLimits(const XMLLimits& limits) { m_limits = limits; }
    /// What setLimits was told last.
    const XMLLimits& getLimits() const { return m_limits; }

    /// Whether the next load keeps where in the text its elements stand, which takes time and memory; not at first.
    void setKeepsPlaces(bool keeps) { m_keepsPlaces = keeps; }
    /// The elements of the model, each before those in it, if their places are kept; else empty.
    const std::vector<CADOrigin>& getOrigins() const { return m_origins; }

    /// Reads the first `ProductDef` of a file; everything else beside it is ignored. A file without one loads and
    /// leaves the document empty. The file's XML is gone when this returns.
    ///
    /// After a failure the tables keep the elements read before it, which live as long as the document; nothing should
    /// follow them.
    /// @param fileName path in the form that the C library opens
    /// What was wrong is told by `getFault`.
    /// @throws std::exception, without message: the file is no regular file, cannot be read, is over the limits or no
    ///         well-formed XML, or its root element is not "PLMXML"
    /// @throws std::invalid_argument, std::out_of_range: a number in a `Transform` (see parseTransformValues)
    /// @throws std::bad_alloc: memory is exhausted, or would be by the numbers of a `Material` (see parseFloatList)
    void load(const std::string& fileName);

    /// Why the last load failed, with its place if places are kept; nothing after one that did not, or that failed for
    /// want of memory.
    const std::optional<CADFault>& getFault() const { return m_fault; }

    /// How many top elements it has.
    std::uint32_t getProductDefCount() const;
    /// Null when the index is past the end.
    CADProductDef* getProductDef(std::uint32_t index) const;

    ///@{
    /// Registration of an element under the id that it has now. Null is ignored; of several elements with one id all
    /// are kept and the last one is found.
    void addInstance(CADInstance* instance);
    void addPart(CADPart* part);
    void addTransform(CADTransform* transform);
    void addRepresentation(CADRepresentation* representation);
    void addUserList(CADUserList* userList);
    void addMaterial(CADMaterial* material);
    void addOccurrence(CADOccurrence* occurrence);
    void addProductView(CADProductView* productView);
    ///@}

    ///@{
    /// Look-up by reference text: a bare id or a local reference. Null for an unknown id and for any reference into
    /// another file.
    CADInstance* findInstance(std::string_view reference) const;
    CADPart* findPart(std::string_view reference) const;
    CADTransform* findTransform(std::string_view reference) const;
    CADRepresentation* findRepresentation(std::string_view reference) const;
    CADMaterial* findMaterial(std::string_view reference) const;
    CADOccurrence* findOccurrence(std::string_view reference) const;
    ///@}

    /// Look-up by bare id: a hash sign counts as part of the id.
    CADPart* findPartById(std::string_view id) const;

    /// The first registered view that is active, the first view if none is, null without views. The choice stands until
    /// another view registers.
    CADProductView* getActiveProductView() const;

    /// How many occurrences are registered.
    std::size_t getOccurrenceCount() const { return m_occurrences.elements().size(); }

    ///@{
    /// For elements that are being read: where they stand, before they read themselves, and what is wrong with them,
    /// before they throw it.
    void noteOrigin(const CADBase& element, const TiXmlElement& source);
    void noteFault(CADFault fault);
    ///@}

private:
    friend struct ModelTestAccess;

    [[noreturn]] void refuse(CADFault fault);
    void loadProductDef(const TiXmlElement& element);
    CADProductView* chooseProductView() const;

    CADIdTable<CADInstance> m_instances;
    CADIdTable<CADPart> m_parts;
    CADIdTable<CADTransform> m_transforms;
    CADIdTable<CADRepresentation> m_representations;
    CADIdTable<CADUserList> m_userLists;
    CADIdTable<CADMaterial> m_materials;
    CADIdTable<CADOccurrence> m_occurrences;
    CADIdTable<CADProductView> m_productViews;
    std::vector<std::unique_ptr<CADProductDef>> m_productDefs;
    std::vector<std::unique_ptr<CADProductDef>> m_halfReadProductDefs; // the tables lead into them
    XMLLimits m_limits;
    bool m_keepsPlaces = false;
    std::vector<CADOrigin> m_origins;
    std::optional<CADFault> m_fault;
    mutable CADProductView* m_activeProductView = nullptr; // asked for at every instance of an assembly, so kept
    mutable std::size_t m_viewsChosenFrom = 0;
};

} // namespace HB::XML::CAD
