#include "ptx/readers/step/PartReferences.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/model/ModelMerge.h"
#include "ptx/readers/PackedFile.h"
#include "ptx/readers/PartFiles.h"
#include "ptx/readers/ReferenceGraph.h"
#include "ptx/readers/step/StepFile.h"
#include "ptx/readers/step/recognition/ReferenceScan.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <variant>

namespace ptx::step
{

namespace
{

bool isFile(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

/// The file that `product` means, and the name that leads there.
model::Reference referenceOf(const std::vector<model::Product>& products, std::size_t product,
                             const std::string& folder, readers::PartFileFinder& finder)
{
    model::Reference best;
    for (const std::string& name : products[product].externalNames) {
        model::Reference next{product, finder.find(folder, name), name};
        if (!finder.refusal(next.file) && isFile(next.file))
            return next;
        const bool looksBetter = best.written.find('.') == std::string::npos && name.find('.') != std::string::npos;
        if (best.written.empty() || looksBetter)
            best = std::move(next);
    }
    return best;
}

/// The references of the products from number `first` on.
std::vector<model::Reference> referencesFrom(const std::vector<model::Product>& products, std::size_t first,
                                             const std::string& file, readers::PartFileFinder& finder)
{
    const std::string folder = std::filesystem::path(file).parent_path().string();
    std::vector<model::Reference> references;
    for (std::size_t product = first; product < products.size(); ++product)
        if (!products[product].externalNames.empty())
            references.push_back(referenceOf(products, product, folder, finder));
    return references;
}

/// Reads an assembly with the files of its parts, depth first without recursion, because files of the wild nest as
/// deeply as they like.
class Inliner
{
public:
    Inliner(StepContent& content, const model::Job& job, occt::HealingAhead& ahead)
        : m_content(content), m_job(job), m_ahead(ahead), m_finder(job.references)
    {
    }

    void run()
    {
        m_job.progress.begin(core::Stage::Merge);
        const std::string root = readers::canonicalPath(m_job.input);
        open(root, referencesFrom(m_content.model.products, 0, m_job.input, m_finder));
        while (!m_open.empty()) {
            File& file = m_open.back();
            if (file.next == file.references.size()) {
                m_around.erase(file.path);
                m_open.pop_back();
                continue;
            }
            const auto known = static_cast<double>(m_known);
            m_job.progress.beginStep(static_cast<double>(m_followed) / known,
                                     static_cast<double>(m_followed + 1) / known);
            ++m_followed;
            follow(model::Reference(file.references[file.next++]));
        }
    }

private:
    /// A file whose references are being followed.
    struct File {
        std::string path;
        std::vector<model::Reference> references;
        std::size_t next = 0;
    };

    void open(const std::string& path, std::vector<model::Reference> references)
    {
        m_known += references.size();
        m_around.insert(path);
        m_open.push_back({path, std::move(references)});
    }

    void follow(const model::Reference& reference)
    {
        if (const auto refusal = m_finder.refusal(reference.file))
            return leaveOut(reference, *refusal);
        const std::string path = readers::canonicalPath(reference.file);
        if (m_around.contains(path))
            return leaveOut(reference, "it leads round in a circle");
        if (!isFile(path))
            return leaveOut(reference, "there is no such file");
        const auto [entry, isNew] = m_contents.try_emplace(path);
        if (isNew)
            entry->second = read(path, reference.file);
        const auto* roots = std::get_if<std::vector<model::Occurrence>>(&entry->second);
        if (!roots)
            return leaveOut(reference, std::get<std::string>(entry->second));
        std::vector<model::Occurrence>& children = m_content.model.products[reference.product].children;
        children.insert(children.end(), roots->begin(), roots->end());
    }

    using Content = std::variant<std::vector<model::Occurrence>, std::string>;

    /// The root occurrences of the file, or the reason why there are none.
    Content read(const std::string& path, const std::string& file)
    {
        const std::uint64_t bytes = readers::packed::sizeOf(path);
        m_job.limits.addInput(bytes);
        const model::Job job{file,           bytes,     false,        m_job.settings,  m_job.limits,
                             m_job.progress, m_job.log, m_job.rescue, m_job.references};
        m_job.log.info("part file " + file);
        core::Outcome<StepContent> part = readStepFile(job, true, m_ahead);
        if (!part)
            return part.failure().message;
        const std::size_t firstProduct = m_content.model.products.size();
        for (FacetBody& body : part.value().facets) {
            body.product += firstProduct;
            m_content.facets.push_back(std::move(body));
        }
        std::vector<model::Occurrence> roots =
            model::mergeModel(m_content.model, std::move(part.value().model), m_content.shapes.size());
        std::move(part.value().shapes.begin(), part.value().shapes.end(), std::back_inserter(m_content.shapes));
        open(path, referencesFrom(m_content.model.products, firstProduct, file, m_finder));
        return roots;
    }

    void leaveOut(const model::Reference& reference, const std::string& why)
    {
        model::Product& product = m_content.model.products[reference.product];
        product.tags.push_back(osg::scenefile::converted::missingTag({reference.file, why}));
        m_job.log.warning("part file " + reference.file + " of \"" + product.name + "\" is left out: " + why);
    }

    StepContent& m_content;
    const model::Job& m_job;
    occt::HealingAhead& m_ahead;
    readers::PartFileFinder m_finder;
    std::vector<File> m_open;
    std::size_t m_known = 0; ///< references so far; files that come in bring more
    std::size_t m_followed = 0;
    std::set<std::string> m_around;
    std::map<std::string, Content> m_contents;
};

} // namespace

void keepReferences(occt::DocumentContent& content, const model::Job& job)
{
    const std::set<std::string> circle =
        readers::filesLeadingBackTo(job.input, recognition::referencesOf, job.references);
    readers::PartFileFinder finder(job.references);
    for (model::Reference& reference : referencesFrom(content.model.products, 0, job.input, finder)) {
        model::Product& product = content.model.products[reference.product];
        const std::optional<std::string> refusal = finder.refusal(reference.file);
        if (refusal || circle.contains(readers::canonicalPath(reference.file))) {
            const std::string why = refusal.value_or("it leads back to this file");
            product.tags.push_back(osg::scenefile::converted::missingTag({reference.file, why}));
            job.log.warning("part file " + reference.file + " of \"" + product.name + "\" stays out: " + why);
            reference.file.clear();
        } else if (!isFile(reference.file)) {
            job.log.warning("part file " + reference.file + " of \"" + product.name + "\": there is no such file");
        }
        content.model.references.push_back(std::move(reference));
    }
    job.log.info(std::to_string(content.model.references.size()) + " products in other files");
}

void inlineParts(StepContent& content, const model::Job& job, occt::HealingAhead& ahead)
{
    const auto refers = [](const model::Product& product) { return !product.externalNames.empty(); };
    if (std::any_of(content.model.products.begin(), content.model.products.end(), refers))
        Inliner(content, job, ahead).run();
}

} // namespace ptx::step
