#include "platform/data/Changes.h"

namespace data {

Changes &Changes::instance()
{
    static Changes changes;
    return changes;
}

} // namespace data
