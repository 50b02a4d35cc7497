#include "ptx/readers/step/damage/Rings.h"

#include <StepBasic_ProductDefinition.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>

#include <cstddef>
#include <unordered_map>

namespace ptx::step::damage
{

namespace
{

using Product = const StepBasic_ProductDefinition*;
using Usage = Handle(StepRepr_NextAssemblyUsageOccurrence);

class RingSearch
{
public:
    explicit RingSearch(const StepData_StepModel& model) : m_model(model)
    {
        for (int number = 1; number <= model.NbEntities(); ++number)
            if (const auto usage = Usage::DownCast(model.Value(number)); !usage.IsNull())
                add(usage);
    }

    std::vector<Fault> run()
    {
        for (const Product assembly : m_assemblies)
            if (!m_products.at(assembly).isPlaced)
                walk(assembly);
        // What is left has no top.
        for (const Product assembly : m_assemblies)
            walk(assembly);
        return std::move(m_faults);
    }

private:
    enum class State { New, Open, Done };
    struct Node {
        std::vector<Usage> usages;
        bool isPlaced = false;
        State state = State::New;
        std::size_t next = 0; ///< of its usages
    };

    void add(const Usage& usage)
    {
        const Product assembly = usage->RelatingProductDefinition().get();
        const Product part = usage->RelatedProductDefinition().get();
        if (!assembly || !part)
            return;
        std::vector<Usage>& usages = m_products[assembly].usages;
        if (usages.empty())
            m_assemblies.push_back(assembly);
        usages.push_back(usage);
        m_products[part].isPlaced = true;
    }

    // Without recursion: structures may be deep.
    void walk(Product top)
    {
        std::vector<Node*> path;
        enter(m_products.at(top), path);
        while (!path.empty()) {
            Node& node = *path.back();
            if (node.next == node.usages.size()) {
                node.state = State::Done;
                path.pop_back();
                continue;
            }
            const Usage& usage = node.usages[node.next++];
            Node& part = m_products.at(usage->RelatedProductDefinition().get());
            if (part.state == State::Open)
                addFault(usage);
            enter(part, path);
        }
    }

    void addFault(const Usage& usage)
    {
        Fault& fault = m_faults.emplace_back();
        fault.ident = m_model.IdentLabel(usage);
        fault.reason = "it puts a product into itself";
    }

    static void enter(Node& node, std::vector<Node*>& path)
    {
        if (node.state != State::New)
            return;
        node.state = State::Open;
        path.push_back(&node);
    }

    const StepData_StepModel& m_model;
    std::vector<Product> m_assemblies; ///< in the order of the file
    std::unordered_map<Product, Node> m_products;
    std::vector<Fault> m_faults;
};

} // namespace

std::vector<Fault> findRings(const StepData_StepModel& model)
{
    return RingSearch(model).run();
}

} // namespace ptx::step::damage
