// Placeholder until the write-back lands; removed with it. Never part of a release.
#include "store/savetoproject.h"

#include "frame/failure.h"

namespace fx {

void SaveClashes2PDS()
{
    Frame("SaveClashes2PDS", [] { Raise("Writing back to the project is not built yet"); });
}

} // namespace fx
