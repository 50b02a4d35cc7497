#include "ptx/model/Losses.h"

#include "files/scenefile/ConvertedTree.h"

namespace ptx::model
{

std::string lossOf(const Job& job, const std::string& reason)
{
    job.log.warning("left out: " + reason);
    return osg::scenefile::converted::missingTag({job.input, reason});
}

void markLostParts(Model& model, const Job& job)
{
    if (job.rescue.lostParts().empty())
        return;
    for (Product& product : model.products)
        if (product.body != NoBody && job.rescue.isLost(product.body))
            product.tags.push_back(lossOf(job, "part \"" + product.name + "\": the CAD kernel crashes on it"));
}

} // namespace ptx::model
