#pragma once

#include "host/OSGSystem/FieldContainer.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace osg
{

/// Watches, from its construction to its destruction, that fields change within the brackets of `beginEditCP` and
/// `endEditCP`, and that each bracket names the fields changed within it. One audit is alive at a time.
class EditAudit
{
public:
    struct Record {
        std::uint32_t id = 0;
        std::string type;
        FieldMask mask = 0;
        friend bool operator==(const Record&, const Record&) = default;
    };

    EditAudit();
    ~EditAudit();
    EditAudit(const EditAudit&) = delete;
    EditAudit& operator=(const EditAudit&) = delete;

    /// The audit that is alive, null in normal work.
    static EditAudit* active();

    /// Changes of fields that no open bracket of their container names.
    const std::vector<Record>& unbracketed() const { return m_unbracketed; }
    /// All closed brackets, in the order in which they closed, with the mask they were opened with.
    const std::vector<Record>& brackets() const { return m_brackets; }
    /// Brackets within which nothing changed that they name.
    const std::vector<Record>& idleBrackets() const { return m_idle; }
    /// Ends without a begin of the same mask.
    const std::vector<Record>& unmatchedEnds() const { return m_unmatched; }
    /// Brackets that are open now.
    std::size_t openBrackets() const;

    void begin(const FieldContainer& container, FieldMask mask);
    void end(const FieldContainer& container, FieldMask mask);
    void fieldChanged(const FieldContainer& container, FieldMask mask);

private:
    struct Bracket {
        FieldMask mask = 0;
        FieldMask changed = 0;
    };

    std::map<std::uint32_t, std::vector<Bracket>> m_open;
    std::vector<Record> m_unbracketed;
    std::vector<Record> m_brackets;
    std::vector<Record> m_idle;
    std::vector<Record> m_unmatched;
};

} // namespace osg
