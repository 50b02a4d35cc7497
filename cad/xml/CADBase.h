#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class TiXmlElement;

namespace HB::XML::CAD
{

class CADDocument;
class CADInstance;
class CADInstanceGraph;
class CADCompoundRef;
struct CADFault;
class CADMaterial;
class CADOccurrence;
class CADPart;
class CADProductDef;
class CADProductView;
class CADRepresentation;
class CADTransform;
class CADUserData;
class CADUserList;
class CADUserListItem;
class CADUserValue;

/// Root of all element classes of the model.
///
/// An element owns its children and deletes them in the order of their construction. All other pointers between
/// elements are borrowed and live as long as the document. An element reads itself from the parser's tree once, with
/// `load`, and keeps nothing of that tree.
class CADBase
{
public:
    /// A root element: it has no parent and enters no list.
    explicit CADBase(CADDocument* document);

    /// A child element: it takes over the parent's document, and the parent owns it from here on, before it has read
    /// anything. With a null parent it has no document and nobody owns it.
    explicit CADBase(CADBase* parent);

    CADBase(const CADBase&) = delete;
    CADBase& operator=(const CADBase&) = delete;

    virtual ~CADBase();

    /// Reads an element with its children. The attributes come first (those of CADBase, then those of the class), the
    /// `UserData` children next and all other children last, whatever their order in the file.
    /// @throws std::exception whatever a number in a descendant throws; the element is then half read
    virtual void load(const TiXmlElement& element);

    /// Reads the attributes of an element: here `name` and `id`.
    virtual void loadAttributes(const TiXmlElement& element);

    /// The attribute `name`; empty without one.
    const std::string& getName() const { return m_name; }
    /// The id, bare as the document writes it, or a generated one; empty without either.
    const std::string& getId() const { return m_id; }
    /// Gives it another id. Tables that it is in already keep the former one.
    void setId(const std::string& id) { m_id = id; }

    /// The last `UserData` child; null if there is none.
    CADUserData* getUserData() const { return m_userData; }

    /// Null on a root element.
    CADBase* getParent() const { return m_parent; }
    /// The document that owns the tree; null for an element without.
    CADDocument* getDocument() const { return m_document; }

    /// The uppermost element over this one (this one, if it has no parent), null if that is no CADProductDef.
    CADProductDef* getRootProductDef();

    /// Creation of a child from a child element of the parser's tree. Each operation compares the element's name,
    /// exactly, with the name or names that it stands for; for any other it does nothing and gives null. Otherwise it
    /// constructs the child, loads it with its whole subtree, generates an id if the class has generated ids and the
    /// element had none, and then registers it in the document's table, if the class has one: so a child enters its
    /// table behind its own descendants.
    /// @return the new child, owned by this element
    CADInstance* createInstance(const TiXmlElement& element);             ///< `Instance`, `ProductInstance`
    CADPart* createPart(const TiXmlElement& element);                     ///< `Part`, `ProductRevisionView`
    CADTransform* createTransform(const TiXmlElement& element);           ///< `Transform`
    CADRepresentation* createRepresentation(const TiXmlElement& element); ///< `Representation`
    CADCompoundRef* createCompoundRep(const TiXmlElement& element);       ///< `CompoundRep`
    CADUserData* createUserData(const TiXmlElement& element);             ///< `UserData`
    CADUserValue* createUserValue(const TiXmlElement& element);           ///< `UserValue`
    CADUserList* createUserList(const TiXmlElement& element);             ///< `UserList`
    CADUserListItem* createUserListItem(const TiXmlElement& element);     ///< `Item`
    CADInstanceGraph* createInstanceGraph(const TiXmlElement& element);   ///< `InstanceGraph`
    CADMaterial* createMaterial(const TiXmlElement& element);             ///< `Material`
    CADProductView* createProductView(const TiXmlElement& element);       ///< `ProductView`
    CADOccurrence* createOccurrence(const TiXmlElement& element);         ///< `Occurrence`

protected:
    /// Gives it another name.
    void setName(const std::string& name) { m_name = name; }

    /// Gives an element without id one that no other living element has: the parent's id, the suffix and the element's
    /// own address. An element that has an id keeps it.
    void generateId(std::string_view suffix);
    /// Tells the document, if there is one, why this element cannot be read.
    void noteFault(const CADFault& fault) const;

private:
    friend struct ModelTestAccess;

    template <class Element, class Registered = Element>
    Element* create(const TiXmlElement& element, std::string_view suffix, void (CADDocument::*add)(Registered*));
    void releaseChild(const CADBase* child);

    std::string m_name;
    std::string m_id;
    CADUserData* m_userData = nullptr;
    CADBase* m_parent = nullptr;
    CADDocument* m_document = nullptr;
    std::vector<std::unique_ptr<CADBase>> m_children;
};

} // namespace HB::XML::CAD
