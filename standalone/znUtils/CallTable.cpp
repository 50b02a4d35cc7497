#include "standalone/znUtils/CallTable.h"

namespace zn
{

bool CallTable::call(const std::string& name, znMessage& message, int caller) const
{
    const auto found = m_functions.find(name);
    return found != m_functions.end() && found->second(message, caller);
}

} // namespace zn
