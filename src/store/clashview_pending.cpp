// Until the clash view lands: saving a clash file calls this; nothing to carry back yet.
#include "store/clashview.h"

namespace fx {

void SaveClashTable()
{
}

} // namespace fx
