#include "files/Note.h"

#include "files/Text.h"

namespace files
{

QString Note::toString() const
{
    return place.isEmpty() ? tr("%1: %2").arg(file, message) : tr("%1: %2 (%3)").arg(file, message, place);
}

} // namespace files
