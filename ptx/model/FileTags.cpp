#include "ptx/model/FileTags.h"

namespace ptx::model
{

void tagFile(Model& model, const std::vector<std::string>& tags)
{
    std::vector<std::string>& own = model.roots.empty() ? model.tags : model.products[model.roots[0].product].tags;
    own.insert(own.end(), tags.begin(), tags.end());
}

} // namespace ptx::model
